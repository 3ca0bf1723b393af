"""The wheel of the package: run by python/wheel, in a folder where generated files and libraries stand beside the sources."""

import pathlib

from setuptools import Distribution, setup
from wheel.bdist_wheel import bdist_wheel

scope: dict = {}
exec(pathlib.Path("tavd/_declarations.py").read_text(encoding="utf-8"), scope)


class WithLibraries(Distribution):
    """The libraries make the wheel one of a platform, though nothing is compiled for Python."""

    def has_ext_modules(self) -> bool:
        return True


class AnyPython(bdist_wheel):
    """For any Python 3: the libraries do not depend on its version."""

    def get_tag(self) -> tuple:
        return "py3", "none", super().get_tag()[2]


setup(
    name="tavd",
    version=scope["VERSION"],
    description="Ventilation products: calculations, diagrams and selection in arrays, tables and notebooks",
    packages=["tavd"],
    package_data={"tavd": ["py.typed", "c.pyi", "lib/*.so"]},
    python_requires=">=3.11",
    install_requires=["numpy"],
    extras_require={"tables": ["pandas"], "notebooks": ["ipython"]},
    distclass=WithLibraries,
    cmdclass={"bdist_wheel": AnyPython},
)
