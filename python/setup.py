"""Everything stands in pyproject.toml, but for the wheel's tag: one with the library in it is for one platform."""

import pathlib

from setuptools import Distribution, setup
from wheel.bdist_wheel import bdist_wheel

CARRIES_LIBRARY = any((pathlib.Path(__file__).parent / "oxlume").glob("liboxlume.so*"))


class PlatformDistribution(Distribution):
    """Goes where compiled modules go if the library is in it."""

    def has_ext_modules(self):
        return CARRIES_LIBRARY


class PlatformWheel(bdist_wheel):
    """A wheel for any Python 3: nothing in it is compiled against one."""

    def get_tag(self):
        return ("py3", "none", super().get_tag()[2])


setup(distclass=PlatformDistribution, cmdclass={"bdist_wheel": PlatformWheel})
