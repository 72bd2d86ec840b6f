"""pytest: the doctests of the package see it as `mensura`."""

import pytest

import mensura


@pytest.fixture(autouse=True)
def _mensura_namespace(doctest_namespace):
    doctest_namespace["mensura"] = mensura
