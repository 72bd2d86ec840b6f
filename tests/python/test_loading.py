"""How the package finds libmensura."""

import os
import subprocess
import sys

import mensura

PACKAGE_PARENT = os.path.dirname(os.path.dirname(os.path.abspath(mensura.__file__)))


def run(env_changes):
    env = dict(os.environ, PYTHONPATH=PACKAGE_PARENT, **env_changes)
    return subprocess.run([sys.executable, "-c", "import mensura; print(mensura.library_path)"],
                          env=env, capture_output=True, text=True)


def test_the_library_named_by_the_environment_is_loaded():
    assert os.path.samefile(mensura.library_path, os.environ["MENSURA_LIBRARY"])


def test_a_named_library_that_does_not_load_is_an_error():
    result = run({"MENSURA_LIBRARY": "/nonexistent/libmensura.so"})
    assert result.returncode != 0
    assert "MENSURA_LIBRARY" in result.stderr


def test_the_system_loader_is_the_last_resort():
    folder = os.path.dirname(os.environ["MENSURA_LIBRARY"])
    env = {"LD_LIBRARY_PATH": folder, "MENSURA_LIBRARY": ""}
    result = run(env)
    assert result.returncode == 0, result.stderr
    assert result.stdout.strip() == "libmensura.so.0"
