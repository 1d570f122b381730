"""Builds the extension module; pyproject.toml has the rest."""
from setuptools import setup

setup(cffi_modules=["build_native.py:ffi"])
