"""Builds the extension module; pyproject.toml describes the package."""
from setuptools import setup

setup(cffi_modules=["build_native.py:ffi"])
