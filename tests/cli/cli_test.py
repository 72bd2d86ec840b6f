#!/usr/bin/env python3
"""Runs the mensura tool as a user would and checks what it writes.

usage: cli_test.py PATH_TO_MENSURA TEST_NAME

Every function named test_* is one CTest case (tests/cli/CMakeLists.txt reads
the names from this file). The expected values come from the definitions of
the units (a foot is 0.3048 m, a pound-force 4.4482216152605 N), from
arithmetic done here in Python, or from the documented defaults of a
formatter; not from earlier runs of the tool.
"""
import json
import math
import os
import re
import subprocess
import sys

TOOL = ""

# No locale: the tool must not depend on one.
ENVIRONMENT = dict(os.environ, LC_ALL="C", LANG="C")


class Result:
    def __init__(self, status, out, err):
        self.status = status
        self.out = out
        self.err = err

    def __repr__(self):
        return f"exit {self.status}\n--- stdout\n{self.out}--- stderr\n{self.err}"


class Failure(Exception):
    pass


def run(*arguments, stdin=None):
    """The tool's exit status and its output, decoded as strict UTF-8."""
    data = stdin.encode("utf-8") if isinstance(stdin, str) else stdin
    completed = subprocess.run([TOOL, *arguments], input=data if data is not None else b"",
                               capture_output=True, env=ENVIRONMENT, timeout=120)
    return Result(completed.returncode, completed.stdout.decode("utf-8"),
                  completed.stderr.decode("utf-8"))


def check(condition, what, result=None):
    if not condition:
        raise Failure(what + ("" if result is None else f"\n{result!r}"))


def expect(arguments, out, status=0, stdin=None):
    """Runs the tool and checks the whole of stdout and the exit status."""
    result = run(*arguments, stdin=stdin)
    check(result.status == status, f"mensura {' '.join(arguments)}: exit {status} expected",
          result)
    check(result.out == out, f"mensura {' '.join(arguments)}: stdout {out!r} expected", result)
    return result


def succeed(*arguments, stdin=None):
    """Runs the tool and checks that it exits 0 with nothing on stderr."""
    result = run(*arguments, stdin=stdin)
    check(result.status == 0 and result.err == "", f"mensura {arguments}: success expected",
          result)
    return result


def twelve(value):
    """A value as the tool prints it by default: 12 significant digits."""
    return "%.12g" % value


# convert ---------------------------------------------------------------------

def test_convert_feet_to_meters():
    expect(["convert", "5.5", "ft", "m"], "1.6764\n")


def test_convert_exact_prints_the_shortest_round_trip():
    # 5.5 * 0.3048 is not 1.6764 in binary: repr gives the shortest text.
    expect(["convert", "--exact", "5.5", "ft", "m"], repr(5.5 * 0.3048) + "\n")
    expect(["convert", "5.5", "ft", "m", "--exact"], "1.6764000000000001\n")


def test_convert_temperatures_with_their_offsets():
    expect(["convert", "100", "°C", "°F"], "212\n")
    expect(["convert", "-40", "degree Fahrenheit", "degree Celsius"], "-40\n")
    expect(["convert", "0", "°C", "K"], "273.15\n")


def test_convert_by_ids_in_hexadecimal_and_decimal():
    expect(["convert", "1", "0x2C018", "0x2C001"], "86400\n")  # a day in seconds
    expect(["convert", "1", str(0x2017), str(0x2001)], "0.3048\n")
    # A complete symbol id names its unit type: symbol 2 of the foot.
    expect(["convert", "1", "0x202017", "m"], "0.3048\n")


def test_convert_units_named_in_chinese_and_with_powers():
    expect(["convert", "1", "米", "ft"], twelve(1 / 0.3048) + "\n")
    expect(["convert", "1", "m²", "ft²"], twelve(1 / 0.3048 ** 2) + "\n")


def test_convert_letters_shared_with_compass_marks():
    # "N" is north in a bearing and the newton elsewhere; FindUnit refuses it,
    # the tool finds the newton by reading "1 N".
    expect(["convert", "10", "N", "lbf"], twelve(10 / 4.4482216152605) + "\n")
    expect(["convert", "5", "m/s", "km/h"], "18\n")


def test_convert_refuses_units_it_cannot_tell():
    result = run("convert", "5", "fleet", "m")
    check(result.status == 1 and "'fleet' is not a known unit" in result.err, "fleet", result)
    result = run("convert", "1", "d", "h")  # the degree mark or the day
    check(result.status == 1 and "degree" in result.err and "day" in result.err, "d", result)
    result = run("convert", "1", "0x2000", "m")
    check(result.status == 1 and "group" in result.err, "a group id is no unit", result)
    result = run("convert", "1", "0x2FFF", "m")
    check(result.status == 1 and "0x2FFF names no unit type" in result.err, "unknown id", result)


def test_convert_between_quantities_fails_with_unit_mismatch():
    result = expect(["convert", "5", "ft", "kg"], "", status=2)
    check("UnitMismatch" in result.err and "a length is not a mass" in result.err,
          "the mismatch is named", result)


def test_convert_reports_a_value_that_is_no_number():
    result = expect(["convert", "five", "ft", "m"], "", status=2)
    check("ParseFailure" in result.err and "'five'" in result.err, "the value is named", result)


def test_convert_batch_reads_one_value_a_line():
    # Blank lines are skipped; a line end may be CRLF; a byte order mark is dropped.
    values = ["1", "2.5", "-4", "+3", "1e3"]
    stdin = "\ufeff1\n2.5\r\n\n-4\n+3\n1e3"
    expected = "".join(twelve(float(v) * 0.3048) + "\n" for v in values)
    expect(["convert", "ft", "m"], expected, stdin=stdin)


def test_convert_batch_goes_on_after_a_failing_line():
    result = expect(["convert", "in", "cm"], "2.54\n25.4\n", status=2, stdin="1\nten\n10\n")
    check(result.err.count("\n") == 1, "one failure", result)
    check(result.err.startswith("mensura: line 2: ParseFailure: cannot read 'ten'"),
          "the failing line by its number", result)


def test_convert_json_reads_back():
    result = succeed("convert", "--json", "5.5", "ft", "m")
    data = json.loads(result.out)
    check(data["value"] == 5.5 * 0.3048 and data["text"] == "1.6764", "value and text", result)
    check(data["unit"] == 0x2001 and data["input"] == "5.5", "unit and input", result)
    result = run("convert", "--json", "ft", "m", stdin="1\nx\n2\n")
    lines = [json.loads(line) for line in result.out.splitlines()]
    check([(d["line"], d["value"]) for d in lines] == [(1, 0.3048), (3, 0.6096)], "lines", result)
    error = json.loads(result.err)
    check(result.status == 2 and error["line"] == 2 and error["error"] == "ParseFailure" and
          error["input"] == "x", "the failure as JSON", result)


# parse -----------------------------------------------------------------------

def test_parse_feet_and_inches():
    expect(["parse", "5′-6 1/2″", "in"], "66.5\n")  # 5 × 12 + 6.5
    expect(["parse", "5′6″", "in"], "66\n")
    expect(["parse", "5′6″", "m"], twelve(66 * 0.0254) + "\n")
    expect(["parse", "5' 6\"", "in"], "66\n")  # the ASCII look-alikes


def test_parse_bearing():
    # N 45°30′ E: 45.5 degrees east of north, which is 44.5 degrees from east.
    expect(["parse", "N 45°30′ E", "degree"], "44.5\n")


def test_parse_units_of_other_scripts_and_products():
    expect(["parse", "3 米", "ft"], twelve(3 / 0.3048) + "\n")
    expect(["parse", "20 °C", "K"], "293.15\n")
    expect(["parse", "2 kg·m/s²", "N"], "2\n")


def test_parse_batch_reports_the_failing_line_and_exits_2():
    result = expect(["parse", "m"], "1.524\n0.1524\n", status=2, stdin="5 ft\n5 fleet\n6 in\n")
    check(result.err == "mensura: line 2: ParseFailure: cannot read '5 fleet' as a length: "
          "'fleet' is not a known unit\n", "the error of line 2", result)


def test_parse_explains_failures():
    cases = [
        (["5 kg", "m"], "cannot read '5 kg' as a length: it reads as a mass, not as a length"),
        # A key of two words is no unknown word.
        (["5 degree Celsius", "m"], "it reads as a temperature, not as a length"),
        (["5 kg·fleet", "m"], "'fleet' is not a known unit"),
        (["", "m"], "the text is empty"),
    ]
    for arguments, message in cases:
        result = expect(["parse", *arguments], "", status=2)
        check(result.err.startswith("mensura: ParseFailure: ") and message in result.err,
              f"{arguments}: {message!r} expected", result)
    result = run("parse", b"5 \xff m", "m")
    check(result.status == 2 and "not valid UTF-8" in result.err, "invalid UTF-8", result)


def test_parse_with_number_settings_and_defaults():
    arguments = ["--decimal-separator", ",", "--group-separator", "."]
    expect(["parse", "1.234,5 m", "m", *arguments], "1234.5\n")
    # A bare number is in the default unit of the group.
    expect(["parse", "5", "m"], "5\n")
    expect(["parse", "5", "m", "--default-unit", "ft"], twelve(5 * 0.3048) + "\n")
    result = run("parse", "5", "m", "--default-unit", "kg")
    check(result.status == 1 and "--default-unit" in result.err, "a unit of another group", result)


def test_parse_json_reads_back():
    result = succeed("parse", "--json", "5′6″", "in")
    data = json.loads(result.out)
    check(data == {"input": "5′6″", "value": 66, "text": "66", "unit": 0x2016}, "parse", result)


# the everyday reading -----------------------------------------------------------
# The tool reads texts the everyday way unless --catalogue-meanings is given.
# A pound is 0.45359237 kg; the catalogue's "lb" is the pound (meter) of 0.5 kg.

CATALOGUE = "--catalogue-meanings"


def test_parse_reads_lb_as_the_avoirdupois_pound_unless_asked_otherwise():
    expect(["parse", "150 lb", "kg"], twelve(150 * 0.45359237) + "\n")
    expect(["parse", CATALOGUE, "150 lb", "kg"], "75\n")
    expect(["parse", "150 lb", "kg", CATALOGUE], "75\n")
    # The option holds for every line of standard input too.
    expect(["parse", "kg"], twelve(2 * 0.45359237) + "\n1\n", stdin="2 lb\n1 kg\n")
    expect(["parse", CATALOGUE, "kg"], "1\n1\n", stdin="2 lb\n1 kg\n")


def test_parse_reads_sums_of_one_kind_unless_asked_otherwise():
    expect(["parse", "5 ft 6 in", "in"], "66\n")
    expect(["parse", "1 h 30 min", "min"], "90\n")
    expect(["parse", "-2 lb 3 oz", "0x5017"], twelve(-(2 + 3 / 16)) + "\n")  # 16 oz a pound
    result = expect(["parse", CATALOGUE, "5 ft 6 in", "in"], "", status=2)
    check("ParseFailure" in result.err and "'5 ft 6 in'" in result.err, "no sums", result)
    # Temperatures on a scale never add.
    result = expect(["parse", "20 °C 5 °C", "°C"], "", status=2)
    check("ParseFailure" in result.err, "no sum of temperatures", result)


def test_parse_reads_everyday_words_prefixes_signs_and_fractions():
    cases = [
        (["5 feet", "m"], twelve(5 * 0.3048)),
        (["20 degrees Celsius", "K"], twelve(20 + 273.15)),
        (["3 meters per second", "km/h"], twelve(3 * 3.6)),
        (["1 hPa", "Pa"], "100"),
        (["1 μs", "s"], twelve(1e-6)),  # the Greek mu, not the micro sign
        (["2 N×m", "J"], "2"),
        (["2 kg*m/s^2", "N"], "2"),
        (["−5 ft", "m"], twelve(-5 * 0.3048)),  # U+2212
        (["+5 m", "m"], "5"),
        (["5′6½″", "in"], "66.5"),
        (["1 1/2 in", "in"], "1.5"),
        (["N45-30E", "degree"], "44.5"),  # 45.5 degrees east of north
    ]
    for arguments, value in cases:
        expect(["parse", *arguments], value + "\n")
        result = run("parse", CATALOGUE, *arguments)
        check(result.status == 2 and result.out == "" and "ParseFailure" in result.err,
              f"{arguments} with {CATALOGUE}: a failure expected", result)


def test_parse_with_both_readings_where_they_agree_and_differ():
    # The catalogue's multiples of the byte are powers of 1024, on a label of 1000.
    expect(["parse", "1 MB", "byte"], "1000000\n")
    expect(["parse", CATALOGUE, "1 MB", "byte"], twelve(2 ** 20) + "\n")
    # A text that both read keeps its value.
    for arguments in [["5 ft", "m"], ["5′-6 1/2″", "in"], ["N 45°30′ E", "degree"]]:
        check(run("parse", *arguments).out == run("parse", CATALOGUE, *arguments).out,
              f"{arguments} reads alike")
    # An exponent behind a quotient applies to its last unit in both readings.
    for option in [[], [CATALOGUE]]:
        expect(["parse", *option, "9.81 m/s^2", "0x30001"], "9.81\n")
        expect(["parse", *option, "5 kg/m²", "0xA001"], "5000\n")  # in g/m²


def test_parse_everyday_meanings_follow_the_locale():
    # The U.S. tablespoon is 14.78676478125 mL; the catalogue's is metric, 15 mL.
    value = float(succeed("parse", "--exact", "1 tbsp", "mL").out)
    check(math.isclose(value, 14.78676478125, rel_tol=1e-14), f"tbsp: {value}")
    expect(["parse", "1 tbsp", "mL", "--locale", "zh"], "15\n")
    expect(["parse", CATALOGUE, "1 tbsp", "mL"], "15\n")


def test_parse_explains_failures_as_the_reading_knows_words():
    result = expect(["parse", "5 feet", "kg"], "", status=2)
    check("it reads as a length, not as a mass" in result.err, "feet is known", result)
    result = expect(["parse", "5 fl oz", "m"], "", status=2)
    check("it reads as a volume, not as a length" in result.err, "a word of two words",
          result)
    result = expect(["parse", "5 ft −6 in", "in"], "", status=2)  # only the first part signs
    check("is not a known unit" not in result.err, "− is a sign", result)
    result = expect(["parse", CATALOGUE, "5 feet", "kg"], "", status=2)
    check("'feet' is not a known unit" in result.err, "feet is unknown", result)


def test_unit_arguments_with_both_readings():
    # A unit argument that is a symbol of the catalogue keeps its meaning.
    for option in [[], [CATALOGUE]]:
        expect(["convert", *option, "150", "lb", "kg"], "75\n")
        expect(["convert", *option, "10", "N", "lbf"], twelve(10 / 4.4482216152605) + "\n")
        expect(["convert", *option, "5", "m/s", "km/h"], "18\n")
    expect(["convert", "150", "pound", "kg"], twelve(150 * 0.45359237) + "\n")
    # One that the catalogue lacks is read the everyday way.
    expect(["convert", "2", "feet", "m"], twelve(2 * 0.3048) + "\n")
    expect(["convert", "1", "kJ", "J"], "1000\n")
    expect(["parse", "5", "m", "--default-unit", "feet"], twelve(5 * 0.3048) + "\n")
    expect(["format", "1", "m", "--symbol", "feet"], "%.2f foot\n" % (1 / 0.3048))
    data = json.loads(succeed("show", "--json", "meters per second").out)
    check(data["id"] == 0x28001, "meters per second", data)
    for arguments in [["convert", CATALOGUE, "2", "feet", "m"],
                      ["convert", CATALOGUE, "1", "kJ", "J"],
                      ["parse", CATALOGUE, "5", "m", "--default-unit", "feet"],
                      ["format", CATALOGUE, "1", "m", "--symbol", "feet"],
                      ["show", CATALOGUE, "meters per second"]]:
        result = run(*arguments)
        check(result.status == 1 and result.out == "" and
              ("is not a known unit" in result.err or "nor a known unit" in result.err),
              f"{arguments}: refused", result)


def test_catalogue_meanings_is_no_option_of_list():
    result = run("list", CATALOGUE)
    check(result.status == 1 and "unknown option" in result.err, "list refuses it", result)
    result = run("parse", "--catalogue-meanings=yes", "5 ft", "m")
    check(result.status == 1 and "takes no value" in result.err, "no value", result)


# format ----------------------------------------------------------------------

def test_format_with_the_default_settings():
    # Style Number, 2 decimal digits, groups of 3, symbol 1: the spelled-out name.
    expect(["format", "5.5", "m"], "5.50 meter\n")
    expect(["format", "1234567.891", "m", "--symbol", "m"], "1,234,567.89 m\n")


def test_format_in_chinese():
    expect(["format", "5.5", "m", "--locale", "zh"], "5.50 米\n")
    expect(["format", "5.5", "m", "--locale", "2052"], "5.50 米\n")
    expect(["format", "5.5", "米", "--locale", "en"], "5.50 meter\n")
    expect(["format", "5.5", "m", "--locale", "zh", "--native-digits", "〇一二三四五六七八九"],
           "五.五〇 米\n")


def test_format_number_settings():
    expect(["format", "1", "m", "--symbol", "ft", "--decimal-digits", "4"], "3.2808 ft\n")
    expect(["format", "1234567.891", "m", "--style", "fixed", "--decimal-digits", "3"],
           "1234567.891 meter\n")
    expect(["format", "1234567", "m", "--group-sizes", "3,2"], "12,34,567.00 meter\n")
    expect(["format", "1234567", "m", "--group-sizes", "3,0"], "1234,567.00 meter\n")
    expect(["format", "1234.5", "m", "--decimal-separator", ",", "--group-separator", "."],
           "1.234,50 meter\n")
    expect(["format", "5", "m", "--positive-sign", "+"], "+5.00 meter\n")
    expect(["format", "-5", "m", "--negative-sign", "−"], "−5.00 meter\n")
    result = succeed("format", "-0.5", "m", "--style", "scientific")
    check(re.fullmatch(r"-5\.00e-0*1 meter\n", result.out), "scientific", result)


def test_format_refuses_settings_the_library_refuses():
    for option, value in [("--decimal-digits", "100"), ("--group-sizes", "3,10"),
                          ("--group-separator", ""), ("--native-digits", "0123456780"),
                          ("--style", "roman"), ("--locale", "xx")]:
        result = run("format", "1", "m", option, value)
        check(result.status == 1 and option in result.err, f"{option} {value!r}", result)


def test_format_symbols_and_defaults():
    expect(["format", "1", "ft", "--default-symbol", "′"], "1.00′\n")
    expect(["format", "1", "m", "--default-unit", "ft"], "%.2f foot\n" % (1 / 0.3048))
    expect(["format", "2", "m", "--symbol", "0x2000", "--default-unit", "in"],
           "%.2f inch\n" % (2 / 0.0254))
    # The compound inch symbol is found by its text: symbol 7 of the inch.
    data = json.loads(run("format", "--json", "66.25", "in", "--symbol", "x′x x/2″").out)
    check(data["symbol"] == 0x702016 and data["symbol_text"] == "x′x x/2″", "x′x x/2″", data)
    # A symbol found by its Chinese text renders in the formatter's language.
    for locale, text in [("zh", "3.28 英尺"), ("en", "3.28 foot")]:
        data = json.loads(succeed("format", "--json", "1", "m", "--symbol", "英尺", "--locale",
                                  locale).out)
        check(data["symbol"] == 0x102017 and data["text"] == text and
              math.isclose(data["converted"], 1 / 0.3048, rel_tol=1e-15), "英尺", data)


def test_format_with_a_symbol_string():
    # 66.25 in is 5 ft and 6.25 in; the placeholders name the numbers of the
    # feet-and-inches symbol, the feet first, wherever they stand.
    expect(["format", "66.25", "in", "--symbol", "x′x″", "--pattern", "{0} ft {1} in"],
           "5 ft 6.25 in\n")
    expect(["format", "66.25", "in", "--symbol", "x′x″", "--pattern", "{1} in {0} ft"],
           "6.25 in 5 ft\n")
    expect(["format", "1.5", "m", "--symbol", "m", "--pattern", "{0} metres"], "1.50 metres\n")
    # Two numbers need two placeholders.
    result = expect(["format", "66.25", "in", "--symbol", "x′x″", "--pattern", "{0} ft"], "",
                    status=1)
    check("--pattern" in result.err and "0x502016" in result.err, "a pattern too short", result)


def test_format_failures():
    result = expect(["format", "1", "m", "--symbol", "kg"], "", status=2)
    check("UnitMismatch" in result.err, "a symbol of another quantity", result)
    result = expect(["format", "1", "m", "--symbol", "xyz"], "", status=1)
    check("'xyz'" in result.err, "an unknown symbol", result)
    result = expect(["format", "1", "m", "--default-symbol", "metre"], "", status=1)
    check("not one of its symbols" in result.err, "a unit is no symbol", result)
    expect(["format", "one", "m"], "", status=2)


# list and show ---------------------------------------------------------------

def test_list_groups():
    result = succeed("list")
    lines = result.out.splitlines()
    check(len(lines) == 68, "68 groups", result)
    check(re.match(r"0x2000 +Length +长度 +66 unit types$", lines[1]), "Length", result)
    data = json.loads(succeed("list", "--json").out)
    check([group["id"] for group in data] == [(i + 1) << 12 for i in range(68)], "ids", data)
    check(data[41]["name"] == {"en": "Temperature", "zh": "温度"}, "names", data[41])


def test_list_a_group_by_any_name():
    result = succeed("list", "Length")
    check(result.out.startswith("Length (长度), 0x2000: 66 unit types\n"), "title", result)
    check(re.search(r"^  0x2017 +foot +英尺 +foot, ft, ′$", result.out, re.M), "foot", result)
    for name in ["length", "长度", "0x2000", "8192"]:
        check(run("list", name).out == result.out, f"list {name}")
    data = json.loads(run("list", "--json", "温度").out)
    check(len(data["unit_types"]) == 4, "four temperature scales", data)
    celsius = data["unit_types"][1]
    check(celsius["id"] == 0x2A002 and "°C" in [s["text"]["en"] for s in celsius["symbols"]],
          "°C", data)
    result = run("list", "Lenght")
    check(result.status == 1 and "no group is named 'Lenght'" in result.err, "typo", result)


def test_show_a_unit():
    result = succeed("show", "ft")
    for line in ["foot (英尺)", "  id          0x2017 (8215)", "  group       0x2000 Length (长度)",
                 "  dimensions  L (m)",
                 "  factor      1 foot = 0.3048 meter (0x2001), the group's coherent unit"]:
        check(line + "\n" in result.out, f"{line!r}", result)
    check(re.search(r"0x202017 +ft +ft$", result.out, re.M), "the symbol ft", result)
    check(run("show", "英尺").out == result.out, "by its Chinese name")


def test_show_dimensions_and_offsets():
    result = run("show", "N")
    check("dimensions  L·M·T⁻² (kg·m·s⁻²)" in result.out, "newton", result)
    data = json.loads(run("show", "--json", "farad").out)
    check(data["dimensions"] == {"length": -2, "mass": -1, "time": 4, "current": 2,
                                 "temperature": 0, "amount": 0, "luminous_intensity": 0},
          "farad", data)
    data = json.loads(run("show", "--json", "°C").out)
    check(data["factor"] == {"reference": 0x2A001, "coherent": True, "value": None,
                             "offset": 273.15}, "°C against kelvin", data)
    check(data["name"] == {"en": "degree Celsius", "zh": "摄氏度"}, "names", data)
    data = json.loads(run("show", "--json", "yd").out)
    check(math.isclose(data["factor"]["value"], 0.9144, rel_tol=1e-15) and
          data["factor"]["reference"] == 0x2001, "yd", data)


# the tool as a whole ----------------------------------------------------------

def test_help_for_the_tool_and_every_command():
    tool = succeed("--help")
    check(tool.out == succeed("help").out == succeed("-h").out, "help, --help and -h")
    for command in ["convert", "parse", "format", "list", "show"]:
        check(f"\n  {command} " in tool.out, f"{command} in the tool's help", tool)
        for arguments in [[command, "--help"], [command, "-h"], ["help", command]]:
            result = succeed(*arguments)
            check(result.out.startswith(f"usage: mensura {command}") and
                  "examples:" in result.out, f"help of {command}", result)
    # The everyday reading is the default, and the option that turns it off is named.
    check("everyday" in tool.out and "--catalogue-meanings" in tool.out, "the reading", tool)
    for command in ["convert", "parse", "format", "show"]:
        result = succeed(command, "--help")
        check("--catalogue-meanings" in result.out, f"{command} names the option", result)
    result = succeed("parse", "--help")
    check("everyday" in result.out and '"5 ft 6 in"' in result.out, "parse's reading", result)


def test_usage_errors_exit_1():
    for arguments in [[], ["frobnicate"], ["convert", "1", "ft"], ["convert", "--bogus", "1",
                      "ft", "m"], ["format", "1", "m", "--symbol"], ["show"],
                      ["parse", "5 ft", "m", "--exact=yes"], ["help", "frobnicate"]]:
        result = run(*arguments)
        check(result.status == 1 and result.out == "" and "mensura" in result.err,
              f"{arguments}", result)


def main():
    global TOOL
    if len(sys.argv) != 3 or not sys.argv[2].startswith("test_"):
        sys.exit(__doc__)
    TOOL = sys.argv[1]
    test = globals().get(sys.argv[2])
    if test is None:
        sys.exit(f"no test named {sys.argv[2]}")
    try:
        test()
    except Failure as failure:
        print(f"FAILED: {failure}")
        sys.exit(1)
    print("passed")


if __name__ == "__main__":
    main()
