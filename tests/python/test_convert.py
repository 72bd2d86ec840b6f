"""mensura.convert, conversion_factor and find_unit against the C functions."""

import ctypes
import math

import numpy as np
import pandas as pd
import pytest

import mensura
from mensura._lib import lib

FOOT, METER, INCH = 0x2017, 0x2001, 0x2016


def c_convert(value, from_id, to_id):
    out = ctypes.c_double()
    assert lib.Convert(value, from_id, ctypes.byref(out), to_id) == 0
    return out.value


def bits(x):
    return np.float64(x).view(np.int64)


def test_scalar_matches_c_convert_bit_for_bit():
    assert mensura.convert(5.5, "ft", "m") == c_convert(5.5, FOOT, METER)
    assert abs(mensura.convert(5.5, "ft", "m") - 1.6764) < 1e-15
    assert bits(mensura.convert(100.0, "°C", "°F")) == bits(c_convert(100.0, 0x2A002, 0x2A003))


def test_units_by_key_id_text_id_and_unit():
    expected = mensura.convert(3.0, "ft", "m")
    assert mensura.convert(3.0, FOOT, METER) == expected
    assert mensura.convert(3.0, "0x2017", "米") == expected
    assert mensura.convert(3.0, mensura.Unit("foot"), "metre") == expected
    assert mensura.find_unit("ft") == FOOT
    assert mensura.find_unit("米") == METER


def test_unknown_and_mismatched_units_raise():
    with pytest.raises(mensura.UnitError, match="unknown unit"):
        mensura.convert(1.0, "furlongz", "m")
    with pytest.raises(mensura.UnitError, match="dimensions differ"):
        mensura.convert(1.0, "ft", "kg")
    with pytest.raises(ValueError):  # UnitError is a ValueError
        mensura.convert([1.0], "ft", "kg")
    with pytest.raises(mensura.UnitError, match="unknown unit"):
        mensura.convert(1.0, 0x2FFF, "m")


def test_a_million_values_bit_for_bit_against_scalar_convert():
    rng = np.random.default_rng(7)
    values = np.concatenate([rng.normal(0, 1e6, 999_990),
                             [0.0, -0.0, 1e-310, -1e308, 1e308, np.inf, -np.inf, np.nan, 5.5, 1.0]])
    out = mensura.convert(values, "ft", "m")
    assert isinstance(out, np.ndarray) and out.dtype == np.float64 and out.shape == values.shape
    convert = lib.Convert
    result = ctypes.c_double()
    expected = np.empty_like(values)
    for i, v in enumerate(values.tolist()):
        convert(v, FOOT, ctypes.byref(result), METER)
        expected[i] = result.value
    assert np.array_equal(out.view(np.int64), expected.view(np.int64))


def test_sequences_and_series():
    assert mensura.convert([1, 2.5], "ft", "in").tolist() == [12.0, c_convert(2.5, FOOT, INCH)]
    assert mensura.convert((1.0,), "ft", "in").tolist() == [12.0]
    assert mensura.convert(np.array([], dtype=np.float64), "ft", "in").size == 0
    series = pd.Series([1.0, 2.0], index=["a", "b"], name="len")
    out = mensura.convert(series, "ft", "in")
    assert isinstance(out, pd.Series)
    assert list(out.index) == ["a", "b"] and out.name == "len" and out.tolist() == [12.0, 24.0]
    # A strided view converts as its values.
    base = np.arange(10, dtype=np.float64)
    assert mensura.convert(base[::2], "ft", "in").tolist() == [0.0, 24.0, 48.0, 72.0, 96.0]


def test_conversion_factor():
    assert mensura.conversion_factor("ft", "in") == 12.0
    assert mensura.conversion_factor("ft", "m") == 0.3048
    assert mensura.conversion_factor("°C", "K") == 0.0
    assert mensura.conversion_factor("ft", "kg") == 0.0


def test_nan_passes_through():
    assert math.isnan(mensura.convert(math.nan, "ft", "m"))
