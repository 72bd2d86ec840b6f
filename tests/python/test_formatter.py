"""mensura.Formatter: settings, format, parse and symbol strings, in both languages."""

import threading

import numpy as np
import pytest

import mensura


def test_locales():
    assert mensura.Formatter("en").format(5.5, "m") == "5.50 meter"
    assert mensura.Formatter(1033).format(5.5, "m", symbol="m") == "5.50 m"
    assert mensura.Formatter("zh").format(5.5, "m") == "5.50 米"
    assert mensura.Formatter(2052).locale == 2052
    with pytest.raises(ValueError):
        mensura.Formatter("xx")


def test_number_settings_as_keywords_and_properties():
    f = mensura.Formatter("en", decimal_digits=3, decimal_separator=",", group_separator=".",
                          group_sizes=[3, 2], number_format=mensura.NumberFormat.NUMBER,
                          negative_sign="−", positive_sign="+")
    assert f.decimal_digits == 3
    assert f.decimal_separator == ","
    assert f.group_separator == "."
    assert f.group_sizes == [3, 2]
    assert f.number_format == mensura.NumberFormat.NUMBER
    assert f.negative_sign == "−"
    assert f.positive_sign == "+"
    assert f.format(-12345678.5, "m", symbol="m") == "−1.23.45.678,500 m"
    f.decimal_digits = 0
    f.number_format = mensura.NumberFormat.FIXED
    assert (f.decimal_digits, f.number_format) == (0, 2)
    assert f.format(2.4, "m", symbol="m") == "+2 m"


def test_bad_settings_raise():
    f = mensura.Formatter()
    with pytest.raises(mensura.MensuraError):
        f.decimal_digits = -1
    with pytest.raises(ValueError):
        f.native_digits = "0123"
    assert f.decimal_digits == 2


def test_native_digits():
    f = mensura.Formatter("zh")
    assert f.native_digits == "0123456789"
    f.native_digits = "〇一二三四五六七八九"
    assert f.native_digits == "〇一二三四五六七八九"
    assert f.format(5.5, "m") == "五.五〇 米"


def test_everyday_reading_setting():
    f = mensura.Formatter(everyday=True)
    assert f.everyday is True
    assert f.parse("5 ft 6 in", "in") == 66.0
    f.everyday = False
    assert f.everyday is False
    with pytest.raises(mensura.ParseError):
        f.parse("5 ft 6 in", "in")


def test_format_with_symbols_and_errors():
    f = mensura.Formatter(decimal_digits=1)
    assert f.format(12.0, "in", symbol="ft") == "1.0 ft"
    foot = mensura.Unit("ft").symbols[1]
    assert f.format(12.0, "in", symbol=foot) == "1.0 ft"
    assert f.format(12.0, "in", symbol=foot.id) == "1.0 ft"
    with pytest.raises(mensura.UnitError):
        f.format(1.0, "m", symbol="kg")
    with pytest.raises(mensura.UnitError):
        f.format(1.0, "nope")


def test_chinese_parse_and_format_round_trip():
    f = mensura.Formatter("zh", decimal_digits=4)
    text = f.format(1.6764, "m")
    assert text == "1.6764 米"
    assert f.parse(text, "m") == mensura.Formatter().parse("1.6764 m", "m")
    assert abs(f.parse(text, "m") - 1.6764) < 1e-15
    assert f.parse("5 英尺", "m") == mensura.convert(5.0, "ft", "m")


def test_symbol_strings():
    f = mensura.Formatter(decimal_digits=0)
    assert f.formatting_string("x′x″") is None
    f.set_formatting_string("x′x″", "{0} ft {1} in")
    assert f.formatting_string("x′x″") == "{0} ft {1} in"
    assert f.format(66.0, "in", symbol="x′x″") == "5 ft 6 in"
    f.set_formatting_string("x′x″", None)
    assert f.formatting_string("x′x″") is None
    assert f.parsing_string("ft") is None
    f.set_parsing_string("ft", "{0} feetz")
    assert f.parsing_string("ft") == "{0} feetz"
    assert f.parse("3 feetz", "in") == 36.0
    with pytest.raises(mensura.MensuraError):
        f.set_parsing_string("ft", "no placeholder here {")
    # Another formatter keeps its own strings.
    assert mensura.Formatter().parsing_string("ft") is None


def test_parse_many_on_a_formatter():
    f = mensura.Formatter("zh")
    out = f.parse(["1 米", "2 英尺", "x"], "m", errors="nan")
    assert out[0] == 1.0 and out[1] == mensura.convert(2.0, "ft", "m") and np.isnan(out[2])


def test_threads_with_their_own_formatters():
    texts = [f"{i} ft {i % 12} in" for i in range(3000)]
    reference = mensura.Formatter(everyday=True).parse(texts, "m")
    failures = []

    def work(digits):
        f = mensura.Formatter("zh" if digits % 2 else "en", decimal_digits=digits, everyday=True)
        for _ in range(20):
            if not np.array_equal(f.parse(texts, "m"), reference):
                failures.append("parse many")
            if f.parse(texts[digits], "m") != reference[digits]:
                failures.append("parse")
            expected = "1." + "0" * digits if digits else "1"
            if not f.format(1.0, "m", symbol="m").startswith(expected + " "):
                failures.append(f"format {digits}")
            if f.decimal_digits != digits:
                failures.append("setting")
            # The module-level parse uses a formatter of this thread.
            if mensura.parse("5′-6 1/2″", "in") != 66.5:
                failures.append("module parse")

    threads = [threading.Thread(target=work, args=(d,)) for d in range(8)]
    for t in threads:
        t.start()
    for t in threads:
        t.join()
    assert failures == []
