#!/bin/bash
# arm64_sysroot.sh FOLDER: unpacks the arm64 packages that the library and its tests are built
# against into a sysroot. They are not installed, and apt's own state is unchanged: the foreign
# packages have separate lists and a separate cache.
set -euo pipefail
readonly folder=$1
readonly packages=(libantlr3c-dev libantlr3c-3.4-0 libicu-dev libicu72 libgtest-dev librapidcheck-dev
  nlohmann-json3-dev)
readonly wanted="${packages[*]} 1"
[ "$(cat "$folder/.unpacked" 2>/dev/null)" != "$wanted" ] || exit 0

apt_folder=$folder.apt
rm -rf "$folder" "$apt_folder"
mkdir -p "$folder" "$apt_folder"/{lists,cache,packages}
# Lists for arm64 only, from the distribution's sources, without third-party sources.
apt_options=(
  -o APT::Architecture=arm64 -o APT::Architectures::=arm64
  -o Dir::State="$apt_folder" -o Dir::State::Lists="$apt_folder/lists"
  -o Dir::State::status=/dev/null -o Dir::Cache="$apt_folder/cache"
  -o APT::Sandbox::User=root -o Acquire::Languages=none
)
apt-get "${apt_options[@]}" update -qq || [ -n "$(ls -A "$apt_folder/lists")" ]
(cd "$apt_folder/packages" && apt-get "${apt_options[@]}" download -qq "${packages[@]}")
for package in "$apt_folder"/packages/*.deb; do dpkg -x "$package" "$folder"; done
echo "$wanted" >"$folder/.unpacked"
