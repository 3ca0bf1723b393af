"""The wheel, installed into an empty virtual environment without a network."""

from __future__ import annotations

import os
import pathlib
import subprocess

from conftest import BUILD, ROOT


def test_the_wheel_brings_the_libraries(catalogue: str, tmp_path: pathlib.Path) -> None:
    subprocess.run([ROOT / "python" / "wheel", BUILD, tmp_path], check=True)
    (wheel,) = tmp_path.glob("*.whl")
    assert wheel.name.startswith("tavd-") and "-py3-none-linux_" in wheel.name
    # NumPy is the system's: without a network there is no other.
    subprocess.run(
        ["/usr/bin/python3", "-m", "venv", "--without-pip", "--system-site-packages", tmp_path / "empty"], check=True
    )
    python = tmp_path / "empty" / "bin" / "python"
    environment = {name: value for name, value in os.environ.items() if not name.startswith(("PYTHON", "TAVD"))}
    pip = ["/usr/bin/python3", "-m", "pip", "--python", python, "install", "--quiet", "--disable-pip-version-check"]
    subprocess.run([*pip, "--no-index", wheel], check=True, env=environment)
    script = """if True:
        import sys, tavd
        product = tavd.open(sys.argv[1])["DMP", "QZDA-160"]
        product.flow_diagram(qv=50, dp=60).save("damper.pdf")
        print(tavd.__file__, product.calc(50, 60).position)
        print(*sorted({line.split()[-1] for line in open("/proc/self/maps") if "libtavd" in line}))
    """
    told = subprocess.run(
        [python, "-c", script, catalogue], check=True, capture_output=True, text=True, env=environment, cwd=tmp_path
    ).stdout
    place = str(tmp_path / "empty" / "lib")
    file, position = told.splitlines()[0].split()
    assert file.startswith(place) and round(float(position), 2) == 5.48
    libraries = told.splitlines()[1].split()
    assert len(libraries) == 5 and all(library.startswith(place) for library in libraries)
    assert (tmp_path / "damper.pdf").read_bytes().startswith(b"%PDF")
