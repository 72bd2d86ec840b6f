"""mensura.parse, ParseMany through lists, arrays and Series, and ParseError."""

import ctypes
import math

import numpy as np
import pandas as pd
import pytest

import mensura
from mensura._lib import lib, utf16z


def c_parse(text, unit, everyday=False):
    formatter = lib.CreateFormatter(1033)
    try:
        flag = ctypes.c_int(1 if everyday else 0)
        assert lib.FormatterReadingSetting(formatter, 2, ctypes.byref(flag)) == 0
        value = ctypes.c_double()
        code = lib.Parse(formatter, utf16z(text), ctypes.byref(value), unit)
        return code, value.value
    finally:
        lib.DestroyFormatter(formatter)


def test_one_text():
    assert mensura.parse("5′-6 1/2″", "in") == 66.5
    assert mensura.parse("1.7 m", "m") == 1.7
    assert mensura.parse("66 in", "m") == c_parse("66 in", 0x2001)[1]


def test_catalogue_reading_by_default_and_everyday_on_request():
    with pytest.raises(mensura.ParseError):
        mensura.parse("5 ft 6 in", "in")
    assert mensura.parse("5 ft 6 in", "in", everyday=True) == 66.0
    # "lb" is the catalogue's pound (meter) of 0.5 kg, the avoirdupois pound when everyday.
    kg = mensura.find_unit("kg")
    assert mensura.parse("1 lb", "kg") == c_parse("1 lb", kg)[1] == 0.5
    assert abs(c_parse("1 lb", kg, everyday=True)[1] - 0.45359237) < 1e-15
    assert mensura.parse("1 lb", "kg", everyday=True) == c_parse("1 lb", kg, everyday=True)[1]
    assert mensura.parse("1 lb", "kg") != mensura.parse("1 lb", "kg", everyday=True)


def test_errors_nan_for_one_text():
    assert math.isnan(mensura.parse("nonsense", "m", errors="nan"))


def test_many_texts_list_and_array():
    texts = ["5′-6 1/2″", "1.7 m", "66 in"]
    expected = [c_parse(t, 0x2001)[1] for t in texts]
    out = mensura.parse(texts, "m")
    assert isinstance(out, np.ndarray) and out.tolist() == expected
    assert mensura.parse(np.array(texts), "m").tolist() == expected
    assert mensura.parse(np.array(texts, dtype=object), "m").tolist() == expected
    assert mensura.parse([], "m").size == 0


def test_many_texts_with_failures():
    texts = ["1 m", "oops", "", "2 m"]
    out = mensura.parse(texts, "m", errors="nan")
    assert out[0] == 1.0 and out[3] == 2.0 and math.isnan(out[1]) and math.isnan(out[2])
    with pytest.raises(mensura.ParseError) as info:
        mensura.parse(texts, "m")
    assert info.value.index == 1 and info.value.text == "oops"
    assert "(text 1)" in str(info.value)


def test_series_keeps_its_index():
    series = pd.Series(["1 ft", "bad", "3 in"], index=[10, 20, 30], name="len")
    out = mensura.parse(series, "in", errors="nan")
    assert isinstance(out, pd.Series) and list(out.index) == [10, 20, 30] and out.name == "len"
    assert out[10] == 12.0 and math.isnan(out[20]) and out[30] == 3.0
    # Missing values are texts that do not read.
    with_missing = pd.Series(["1 ft", None, np.nan])
    assert mensura.parse(with_missing, "in", errors="nan").isna().tolist() == [False, True, True]
    with pytest.raises(TypeError):
        mensura.parse(with_missing, "in")


def test_many_match_one_by_one_on_many_texts():
    texts = [f"{i} ft {i % 12} in" for i in range(2000)] + [f"{i}.5 m" for i in range(2000)]
    many = mensura.parse(texts, "m", everyday=True)
    one = [mensura.parse(t, "m", everyday=True) for t in texts]
    assert np.array_equal(many.view(np.int64), np.array(one).view(np.int64))


def test_a_zero_in_a_text_does_not_split_it():
    out = mensura.parse(["1 m", "2\0 m", "3 m"], "m", errors="nan")
    assert out[0] == 1.0 and math.isnan(out[1]) and out[2] == 3.0


def test_unknown_target_unit():
    with pytest.raises(mensura.UnitError):
        mensura.parse("1 m", "nope")
    with pytest.raises(ValueError):
        mensura.parse(["1 m"], "m", errors="ignore")
    with pytest.raises(ValueError):
        mensura.parse("1 m", "m", errors="ignore")


def test_parse_error_unknown_text_with_caret():
    with pytest.raises(mensura.ParseError) as info:
        mensura.parse("1e-9 km3", "L")
    error = info.value
    assert (error.reason, error.start, error.length, error.culprit) == (1, 5, 3, "km3")
    lines = str(error).splitlines()
    assert lines[1] == "  1e-9 km3" and lines[2] == "       ^~~"
    assert isinstance(error, ValueError)


def test_parse_error_other_quantity_gives_dimensions_and_group():
    with pytest.raises(mensura.ParseError) as info:
        mensura.parse("5 kg", "m")
    error = info.value
    assert error.reason == 2 and error.code == 2
    assert error.dimensions == (0, 1, 0, 0, 0, 0, 0)
    assert error.group_name == "Mass" and error.group == mensura.Unit("kg").group
    assert "Mass" in str(error)


def test_parse_error_empty_text():
    with pytest.raises(mensura.ParseError) as info:
        mensura.parse("", "m")
    assert info.value.reason == 4 and "empty" in str(info.value)


def test_parse_error_indices_count_characters_not_utf16_units():
    # Characters above U+FFFF take two UTF-16 units each; the error counts characters.
    cases = {
        "\U0001D7D3\U0001D7D3 feetz": (0, 2, "\U0001D7D3\U0001D7D3"),
        "5 \U0001F600 feetz": (2, 1, "\U0001F600"),
        "5 m \U0001F600": (4, 1, "\U0001F600"),
    }
    for text, (start, length, culprit) in cases.items():
        with pytest.raises(mensura.ParseError) as info:
            mensura.parse(text, "m")
        error = info.value
        assert (error.start, error.length, error.culprit) == (start, length, culprit), text
    # The caret stands under the culprit, two columns for a wide character.
    assert str(error).splitlines()[2] == "  " + " " * 4 + "^~"


def test_caret_counts_wide_characters_as_two_columns():
    with pytest.raises(mensura.ParseError) as info:
        mensura.parse("5 米 xyz", "m")
    lines = str(info.value).splitlines()
    assert info.value.culprit == "xyz"
    assert lines[2] == "  " + " " * 5 + "^~~"
