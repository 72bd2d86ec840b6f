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
import struct
import subprocess
import sys
import tempfile
import unicodedata

TOOL = ""

# No locale: the tool must not depend on one.
ENVIRONMENT = dict(os.environ, LC_ALL="C", LANG="C")

# The most memory that the tool may take, whatever its input: it holds one
# line at a time. A sanitizer's own memory (shadow, quarantine of freed
# blocks) is no measure of the tool's, so sanitized builds check the answers
# alone.
MEMORY_BOUND_KB = 32 * 1024
SANITIZED = os.environ.get("MENSURA_SANITIZED") == "1"


def within_memory_bound(peak):
    return SANITIZED or peak < MEMORY_BOUND_KB


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


# Runs a command with standard input and output on files and prints its exit
# status and its peak memory. A process fresh and small: the peak of a
# child counts the memory of its parent at the fork.
MEASURE = """
import resource, subprocess, sys
with open(sys.argv[1], "rb") as i, open(sys.argv[2], "wb") as o, open(sys.argv[3], "wb") as e:
    status = subprocess.run(sys.argv[4:], stdin=i, stdout=o, stderr=e, timeout=120).returncode
print(status, resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)
"""


def run_measured(arguments, stdin):
    """The tool's result, as run gives it, and its peak memory in KB."""
    with tempfile.TemporaryDirectory() as folder:
        paths = [os.path.join(folder, name) for name in ["in", "out", "err"]]
        with open(paths[0], "wb") as file:
            file.write(stdin)
        measured = subprocess.run([sys.executable, "-c", MEASURE, *paths, TOOL, *arguments],
                                  capture_output=True, text=True, env=ENVIRONMENT, timeout=180)
        status, peak = map(int, measured.stdout.split())
        with open(paths[1], "rb") as out, open(paths[2], "rb") as err:
            return Result(status, out.read().decode("utf-8"), err.read().decode("utf-8")), peak


def succeed(*arguments, stdin=None):
    """Runs the tool and checks that it exits 0 with nothing on stderr."""
    result = run(*arguments, stdin=stdin)
    check(result.status == 0 and result.err == "", f"mensura {arguments}: success expected",
          result)
    return result


def twelve(value):
    """A value as the tool prints it by default: 12 significant digits."""
    return "%.12g" % value


def columns(character):
    """The columns a character takes on a terminal, by Python's Unicode data."""
    if unicodedata.combining(character) or character in "\u200b\u200c\u200d\ufeff":
        return 0
    return 2 if unicodedata.east_asian_width(character) in "WF" else 1


def marked_text(err):
    """The first excerpt of a failure in err: the text shown, and the part of
    it that stands above the caret and its tildes, found by columns."""
    lines = err.split("\n")
    for number, line in enumerate(lines):
        caret = re.fullmatch(r"( *)\^(~*)", line)
        if caret is None or number == 0:
            continue
        shown = lines[number - 1]
        if not shown.startswith("  "):
            raise Failure(f"the excerpt is not indented by two blanks:\n{err}")
        first = len(caret.group(1)) - 2
        last = first + 1 + len(caret.group(2))
        column = 0
        marked = ""
        for character in shown[2:]:
            if first <= column < last or (columns(character) == 0 and marked and column == last):
                marked += character
            column += columns(character)
        if column < last:
            raise Failure(f"the caret line runs past the text:\n{err}")
        return shown[2:], marked
    return None


# answers and failures by their arguments ---------------------------------------

# The questions of the interactive loop.
HAVE = "You have: "
WANT = "You want: "

# Command lines, each with the whole of its standard output.
ANSWERS = [
    # The shortest text that reads back: 5.5 * 0.3048 is not 1.6764 in binary.
    (["convert", "--exact", "5.5", "ft", "m"], repr(5.5 * 0.3048) + "\n"),
    (["convert", "5.5", "ft", "m", "--exact"], "1.6764000000000001\n"),
    # Temperatures with their offsets.
    (["convert", "100", "°C", "°F"], "212\n"),
    (["convert", "-40", "degree Fahrenheit", "degree Celsius"], "-40\n"),
    (["convert", "0", "°C", "K"], "273.15\n"),
    # Ids in hexadecimal and decimal; a complete symbol id names its unit type.
    (["convert", "1", "0x2C018", "0x2C001"], "86400\n"),  # a day in seconds
    (["convert", "1", str(0x2017), str(0x2001)], "0.3048\n"),
    (["convert", "1", "0x202017", "m"], "0.3048\n"),  # symbol 2 of the foot
    # format: style Number, 2 decimal digits, groups of 3, symbol 1, the
    # spelled-out name; in either language.
    (["format", "5.5", "m"], "5.50 meter\n"),
    (["format", "1234567.891", "m", "--symbol", "m"], "1,234,567.89 m\n"),
    (["format", "5.5", "m", "--locale", "zh"], "5.50 米\n"),
    (["format", "5.5", "m", "--locale", "2052"], "5.50 米\n"),
    (["format", "5.5", "米", "--locale", "en"], "5.50 meter\n"),
    (["format", "5.5", "m", "--locale", "zh", "--native-digits", "〇一二三四五六七八九"],
     "五.五〇 米\n"),
    # Number settings.
    (["format", "1", "m", "--symbol", "ft", "--decimal-digits", "4"], "3.2808 ft\n"),
    (["format", "1234567.891", "m", "--style", "fixed", "--decimal-digits", "3"],
     "1234567.891 meter\n"),
    (["format", "1234567", "m", "--group-sizes", "3,2"], "12,34,567.00 meter\n"),
    (["format", "1234567", "m", "--group-sizes", "3,0"], "1234,567.00 meter\n"),
    (["format", "1234.5", "m", "--decimal-separator", ",", "--group-separator", "."],
     "1.234,50 meter\n"),
    (["format", "5", "m", "--positive-sign", "+"], "+5.00 meter\n"),
    (["format", "-5", "m", "--negative-sign", "−"], "−5.00 meter\n"),
    (["format", "-0.5", "m", "--style", "scientific"], "-5.00e-01 meter\n"),
    # parse with number settings; a bare number is in the default unit of
    # the group.
    (["parse", "1.234,5 m", "m", "--decimal-separator", ",", "--group-separator", "."],
     "1234.5\n"),
    (["parse", "5", "m"], "5\n"),
    (["parse", "5", "m", "--default-unit", "ft"], twelve(5 * 0.3048) + "\n"),
    # A symbol string: 66.25 in is 5 ft and 6.25 in, and the placeholders
    # name the numbers of the feet-and-inches symbol, the feet first,
    # wherever they stand.
    (["format", "66.25", "in", "--symbol", "x′x″", "--pattern", "{0} ft {1} in"],
     "5 ft 6.25 in\n"),
    (["format", "1.5", "m", "--symbol", "m", "--pattern", "{0} metres"], "1.50 metres\n"),
    # interactive without a unit gives the coherent unit, and a bare number
    # stays a number.
    (["interactive"], f"{HAVE}{WANT}  3 m\n{HAVE}{WANT}  {twelve(20 + 273.15)} K\n"
     f"{HAVE}{WANT}  {twelve(1.5 * 3600)} s\n{HAVE}{WANT}  100 Pa\n{HAVE}{WANT}  5\n{HAVE}\n",
     "3 米\n\n20 °C\n\n1 h 30 min\n\n1 hPa\n\n5\n\n"),
    # It ends cleanly at the end of input, in the middle of a question too,
    # and without a last line end.
    (["interactive"], f"{HAVE}\n", ""),
    (["interactive"], f"{HAVE}{WANT}\n", "5 ft\n"),
    (["interactive"], f"{HAVE}{WANT}  1.524 m\n{HAVE}\n", "5 ft\nm"),
]


def test_answers_by_arguments():
    for arguments, out, *stdin in ANSWERS:
        expect(arguments, out, stdin=stdin[0] if stdin else None)


# Command lines that fail: the exit status and what standard error names.
FAILURES = [
    (["convert", "5", "fleet", "m"], 1, ["'fleet' is not a known unit"]),
    (["convert", "1", "d", "h"], 1, ["degree", "day"]),  # the degree mark or the day
    (["convert", "1", "0x2000", "m"], 1, ["group"]),  # a group id is no unit
    (["convert", "1", "0x2FFF", "m"], 1, ["0x2FFF names no unit type"]),
    (["convert", "5", "ft", "kg"], 2, ["UnitMismatch", "a length is not a mass"]),
    (["convert", "five", "ft", "m"], 2, ["ParseFailure", "'five'"]),
    (["format", "1", "m", "--symbol", "kg"], 2, ["UnitMismatch"]),
    (["format", "1", "m", "--symbol", "xyz"], 1, ["'xyz'"]),
    (["format", "1", "m", "--default-symbol", "metre"], 1, ["not one of its symbols"]),
    (["format", "one", "m"], 2, []),
    # Settings that the library refuses name their option.
    (["format", "1", "m", "--decimal-digits", "100"], 1, ["--decimal-digits"]),
    (["format", "1", "m", "--group-sizes", "3,10"], 1, ["--group-sizes"]),
    (["format", "1", "m", "--group-separator", ""], 1, ["--group-separator"]),
    (["format", "1", "m", "--native-digits", "0123456780"], 1, ["--native-digits"]),
    (["format", "1", "m", "--style", "roman"], 1, ["--style"]),
    (["format", "1", "m", "--locale", "xx"], 1, ["--locale"]),
    (["parse", "5", "m", "--default-unit", "kg"], 1, ["--default-unit"]),  # another group
    # Two numbers need two placeholders.
    (["format", "66.25", "in", "--symbol", "x′x″", "--pattern", "{0} ft"], 1,
     ["--pattern", "0x502016"]),
    # Usage errors.
    (["list", "--catalogue-meanings"], 1, ["unknown option"]),
    (["parse", "--catalogue-meanings=yes", "5 ft", "m"], 1, ["takes no value"]),
    (["--version", "extra"], 1, []),
    (["interactive", "5 ft"], 1, ["standard input"]),
    ([], 1, ["mensura"]),
    (["frobnicate"], 1, ["mensura"]),
    (["convert", "1", "ft"], 1, ["mensura"]),
    (["convert", "--bogus", "1", "ft", "m"], 1, ["mensura"]),
    (["format", "1", "m", "--symbol"], 1, ["mensura"]),
    (["show"], 1, ["mensura"]),
    (["parse", "5 ft", "m", "--exact=yes"], 1, ["mensura"]),
    (["help", "frobnicate"], 1, ["mensura"]),
]


def test_failures_name_their_cause():
    for arguments, status, fragments in FAILURES:
        result = expect(arguments, "", status=status)
        check(all(fragment in result.err for fragment in fragments), f"{arguments}", result)


# convert ---------------------------------------------------------------------

def test_convert_batch_reads_one_value_a_line():
    # Blank lines are skipped; a line end may be CRLF; a byte order mark is dropped.
    values = ["1", "2.5", "-4", "+3", "1e3"]
    stdin = "\ufeff1\n2.5\r\n\n-4\n+3\n1e3"
    expected = "".join(twelve(float(v) * 0.3048) + "\n" for v in values)
    expect(["convert", "ft", "m"], expected, stdin=stdin)


def test_numbers_are_written_as_printf_writes_them():
    # Twelve significant digits as %.12g has them, the exact ones as the
    # shortest text that reads back: values at the ends of the range, at
    # powers of ten and just either side, on and near a halfway point of the
    # twelfth digit, where they round up to one more digit, and at random.
    import random
    randomly = random.Random(12)
    values = [0.0, 5e-324, 2.2250738585072014e-308, 1.7976931348623157e308, 1234567890.125,
              1234567890.375, 100000000000.5, 100000000001.5, 999999999999.5,
              99999.99999999999, 0.000099999999999995,
              9.9999999999995e-5, 123456789012.49998, 0.1 + 0.2]
    for exponent in range(-14, 15):
        power = 10.0 ** exponent
        values += [power, math.nextafter(power, 0), math.nextafter(power, math.inf)]
    for _ in range(3000):
        values.append(randomly.choice([-1, 1]) * 10 ** randomly.uniform(-13, 14))
        values.append(randomly.uniform(0, 1000) * 0.3048)
        values.append(struct.unpack("<d", randomly.getrandbits(64).to_bytes(8, "little"))[0])
    values = [value for value in values if math.isfinite(value)]
    stdin = "".join(repr(value) + "\n" for value in values)
    result = succeed("convert", "m", "m", stdin=stdin)
    wrong = [(repr(value), text, twelve(value)) for value, text in
             zip(values, result.out.split("\n")) if text != twelve(value)]
    check(not wrong and result.out.count("\n") == len(values), "value, text, %.12g",
          wrong[:10])
    result = succeed("convert", "--exact", "m", "m", stdin=stdin)
    check([float(text) for text in result.out.split()] == values, "exact texts read back")


def test_json_reads_back():
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
    result = succeed("parse", "--json", "5′6″", "in")
    check(json.loads(result.out) == {"input": "5′6″", "value": 66, "text": "66", "unit": 0x2016},
          "parse", result)
    # A failure carries the reason, without the excerpt.
    result = expect(["parse", "--json", "5 feets", "m"], "", status=2)
    check(json.loads(result.err) == {"input": "5 feets", "error": "ParseFailure",
                                     "message": "'feets' is not a known unit or mark"},
          "JSON failure", result)


# parse -----------------------------------------------------------------------

def test_parse_explains_failures():
    # The reason, then the text with the part to blame marked, or the whole
    # text where the reason is about all of it.
    cases = [
        (["5 kg", "m"], "it reads as a mass (Mass), not a length", "5 kg", "5 kg"),
        # A key of two words is no unknown word.
        (["5 degree Celsius", "m"], "it reads as a temperature (Temperature), not a length",
         "5 degree Celsius", "5 degree Celsius"),
        (["5 kg·fleet", "m"], "'fleet' is not a known unit or mark", "5 kg·fleet", "fleet"),
        (["5 ft 6 in", "kg"], "it reads as a length (Length), not a mass", "5 ft 6 in",
         "5 ft 6 in"),
        # Only the first part of a sum takes a sign.
        (["5 ft −6 in", "in"], "its numbers, units and marks do not make one value",
         "5 ft −6 in", "5 ft −6 in"),
    ]
    for arguments, message, shown, marked in cases:
        result = expect(["parse", *arguments], "", status=2)
        check(result.err.startswith(f"mensura: ParseFailure: {message}\n"),
              f"{arguments}: {message!r} expected", result)
        check(marked_text(result.err) == (shown, marked), f"{arguments}: {marked!r} marked",
              result)
    # An empty text has nothing to mark.
    result = expect(["parse", "", "m"], "", status=2)
    check(result.err == "mensura: ParseFailure: the text is empty\n", "empty", result)
    # The caret stands under the first byte that is no UTF-8, shown as U+FFFD.
    result = run("parse", b"5 m\xff m", "m")
    check(result.status == 2 and result.err.startswith("mensura: ParseFailure: it is not valid "
                                                        "UTF-8\n"), "invalid UTF-8", result)
    check(marked_text(result.err) == ("5 m\ufffd m", "\ufffd"), "the stray byte", result)


def test_parse_marks_the_unknown_part_with_a_caret():
    # The exponent is the culprit, not the 'e' of the number.
    result = expect(["parse", "1e-9 km3", "L"], "", status=2)
    check(result.err == "mensura: ParseFailure: 'km3' is not a known unit or mark\n"
          "  1e-9 km3\n"
          "       ^~~\n", "km3", result)
    # Each failing line of standard input has its own excerpt.
    result = expect(["parse", "m"], "1\n", status=2, stdin="5 feets\n1 m\n2 mx\n")
    check(result.err.count("^") == 2 and "line 1: " in result.err and "line 3: " in result.err,
          "two failures", result)
    check(marked_text(result.err.split("mensura: line 3")[1]) == ("2 mx", "mx"), "mx", result)


def test_parse_caret_counts_columns_not_bytes():
    # ′ is three bytes of UTF-8 and é two: each is one column.
    result = expect(["parse", "5′ fooé", "m"], "", status=2)
    check(result.err == "mensura: ParseFailure: 'fooé' is not a known unit or mark\n"
          "  5′ fooé\n"
          "     ^~~~\n", "fooé", result)
    # A Chinese character takes two columns on a terminal, before the culprit
    # and inside it.
    result = expect(["parse", "3 米 feets", "m"], "", status=2)
    check(result.err.endswith("\n  3 米 feets\n       ^~~~~\n"), "after 米", result)
    result = expect(["parse", "5 米x", "m"], "", status=2)
    check(result.err.endswith("\n  5 米x\n    ^~~\n") and
          marked_text(result.err) == ("5 米x", "米x"), "米x", result)
    # A character beyond the 16-bit range is two units of the library's span
    # and one column.
    result = expect(["parse", "5 m 𝑥y", "m"], "", status=2)
    check(result.err.endswith("\n  5 m 𝑥y\n      ^~\n") and "'𝑥y'" in result.err, "𝑥y",
          result)
    # A combining accent takes no column of its own.
    result = expect(["parse", "5 m e\u0301x", "m"], "", status=2)
    check(marked_text(result.err) == ("5 m e\u0301x", "e\u0301x") and
          result.err.endswith("\n      ^~\n"), "é in two characters", result)


def test_failure_messages_of_long_lines_stay_short():
    # A line of sixty thousand letters: the message quotes a few of them.
    line = "5 m " + "x" * 60_000
    result = expect(["parse", "m"], "", status=2, stdin=line + "\n")
    check(len(result.err) < 400, "a short message", result.err[:1000])
    check(result.err.startswith("mensura: line 1: ParseFailure: '" + "x" * 30 + "…' is not a "
                                "known unit or mark\n"), "the quote is cut", result.err[:1000])
    shown, marked = marked_text(result.err)
    check(shown.startswith("5 m x") and shown.endswith("…") and set(marked) == {"x"} and
          sum(map(columns, shown)) <= 62, "the text is cut after the culprit", result.err[:1000])
    # A culprit in the middle of a long line: cut at both sides, the caret
    # still under it.
    line = "7" * 30_000 + " feets " + "8" * 30_000
    result = expect(["parse", "m"], "", status=2, stdin=line + "\n")
    check(len(result.err) < 400, "a short message", result.err[:1000])
    shown, marked = marked_text(result.err)
    check(shown.startswith("…7") and shown.endswith("8…") and marked == "feets",
          "cut at both sides", result.err[:1000])
    # convert quotes a few characters of a long value too, and JSON a few more.
    result = expect(["convert", "ft", "m"], "", status=2, stdin="9" * 10 + "x" * 60_000)
    check(len(result.err) < 400 and "'9999999999xxxx" in result.err, "convert", result.err[:1000])
    result = expect(["parse", "--json", "m"], "", status=2, stdin="5 m " + "é" * 30_000)
    check(len(result.err) < 400 and json.loads(result.err)["input"] == "5 m " + "é" * 56 + "…",
          "the input of a JSON failure", result.err[:1000])
    # A line of 5 MB is not held at all: one short message, in plain text and
    # in JSON, and the next line is answered.
    for text in ["5 m " + "x" * 5_000_000, "1 " + "m " * 2_500_000, "\x00" * 5_000_000]:
        result = expect(["parse", "m"], "1.524\n", status=2, stdin=text + "\n5 ft\n")
        check(result.err == "mensura: line 1: ParseFailure: the line is longer than 65536 bytes\n",
              "a line of 5 MB", result.err[:1000])
        result = run("parse", "--json", "m", stdin=text + "\n5 ft\n")
        check(result.status == 2 and json.loads(result.out)["line"] == 2 and
              json.loads(result.err)["line"] == 1 and len(result.err) < 1000, "as JSON",
              result.err[:1000])
    # A long unit, asked by interactive, is refused at once.
    result = expect(["interactive"], f"{HAVE}{WANT}{WANT}  1 m\n{HAVE}\n",
                    stdin="1 m\n" + "m " * 30_000 + "\nm\n")
    check(len(result.err) < 400 and "too long for a unit" in result.err, "a long unit",
          result.err[:1000])
    # Nor is a line larger than the memory bound.
    result, peak = run_measured(["parse", "m"], b"1 " + b"m " * 20_000_000 + b"\n5 ft\n")
    check(result.status == 2 and result.out == "1.524\n" and within_memory_bound(peak),
          f"a line of 40 MB: {peak} KB", result)


def test_parse_notes_a_catalogue_meaning_that_the_everyday_reading_changes():
    # The catalogue's lb is the pound (meter) of 0.5 kg; a pound is 0.45359237 kg.
    note = ("'lb' is read as pound (meter), 0.5 kilogram; the everyday reading (the default) "
            "takes it as pound, 0.45359237 kilogram")
    result = expect(["parse", CATALOGUE, "150 lb", "kg"], "75\n")
    check(result.err == f"mensura: note: {note}\n", "the note", result)
    # The everyday reading needs no note, nor does a text without such a symbol.
    succeed("parse", "150 lb", "kg")
    succeed("parse", CATALOGUE, "5 kg", "lb")
    # On standard input, once for a symbol, on the first line that has it.
    result = expect(["parse", CATALOGUE, "kg"], "75\n1\n1\n", stdin="150 lb\n2 lb\n1 kg\n")
    check(result.err == f"mensura: line 1: note: {note}\n", "one note", result)
    result = expect(["parse", CATALOGUE, "--json", "150 lb", "kg"],
                    json.dumps({"input": "150 lb", "value": 75, "text": "75",
                                "unit": 0x5001}, separators=(",", ":")) + "\n")
    check(json.loads(result.err) == {"note": note}, "the note as JSON", result)
    # The catalogue's megabyte is 2^20 bytes of 8 bits, the everyday one 10^6 bytes.
    result = expect(["parse", CATALOGUE, "1 MB", "byte"], twelve(2 ** 20) + "\n")
    check(result.err == f"mensura: note: 'MB' is read as megabyte, {2 ** 23} bit; the everyday "
          f"reading (the default) takes it as {8 * 10 ** 6} bit\n", "MB", result)


# the everyday reading -----------------------------------------------------------
# The tool reads texts the everyday way unless --catalogue-meanings is given.
# A pound is 0.45359237 kg; the catalogue's "lb" is the pound (meter) of 0.5 kg.

CATALOGUE = "--catalogue-meanings"


def test_parse_reads_the_everyday_way_unless_asked_otherwise():
    # What each reading reads is the library's; the tool chooses the reading,
    # by the option before or after the arguments, for every line of
    # standard input too.
    expect(["parse", "150 lb", "kg"], twelve(150 * 0.45359237) + "\n")
    expect(["parse", "150 lb", "kg", CATALOGUE], "75\n")
    expect(["parse", "kg"], twelve(2 * 0.45359237) + "\n1\n", stdin="2 lb\n1 kg\n")
    expect(["parse", CATALOGUE, "kg"], "1\n1\n", stdin="2 lb\n1 kg\n")
    expect(["parse", "5 ft 6 in", "in"], "66\n")
    result = expect(["parse", CATALOGUE, "5 ft 6 in", "in"], "", status=2)
    check("ParseFailure" in result.err and marked_text(result.err) == ("5 ft 6 in", "5 ft 6 in"),
          "no sums", result)


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


# format ----------------------------------------------------------------------

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


def test_show_dimensions_and_factors():
    # The dimensions are the library's; the tool writes them, in text and JSON.
    result = succeed("show", "newton")
    check("\n  dimensions  L·M·T⁻² (kg·m·s⁻²)\n" in result.out, "newton", result)
    result = succeed("show", "ohm")
    check("\n  dimensions  L²·M·T⁻³·I⁻² (kg·m²·s⁻³·A⁻²)\n" in result.out, "ohm", result)
    # An angle is a ratio of lengths: it has none.
    result = succeed("show", "rad")
    check("\n  dimensions  1 (1)\n" in result.out, "radian", result)
    data = json.loads(succeed("show", "--json", "farad").out)
    check(data["dimensions"] == {"length": -2, "mass": -1, "time": 4, "current": 2,
                                 "temperature": 0, "amount": 0, "luminous_intensity": 0},
          "farad", data)
    data = json.loads(succeed("show", "--json", "0x2B001").out)  # celsius per minute
    check(data["dimensions"]["time"] == -1 and data["dimensions"]["temperature"] == 1 and
          data["base_units"] == "s⁻¹·K", "a temperature rate", data)
    data = json.loads(succeed("show", "--json", "°C").out)
    check(data["factor"] == {"reference": 0x2A001, "coherent": True, "value": None,
                             "offset": 273.15}, "°C against kelvin", data)
    check(data["name"] == {"en": "degree Celsius", "zh": "摄氏度"}, "names", data)
    data = json.loads(succeed("show", "--json", "yd").out)
    check(math.isclose(data["factor"]["value"], 0.9144, rel_tol=1e-15) and
          data["factor"]["reference"] == 0x2001, "yd", data)


# lines that fail, streams and their errors -------------------------------------

def test_bad_lines_are_reported_by_number_and_the_others_answered():
    # Each kind of bad line, among good ones, many times over: every good
    # line is answered in order, every bad one reported once with its
    # number, blank lines skipped.
    kinds = [
        (b"5 ft", "1.524"),
        (b"6 in\r", "0.1524"),  # a CRLF line end
        (b"5 fleet", "'fleet' is not a known unit or mark"),
        (b"1\x002 m", "it holds a NUL byte"),  # read up to its NUL, it would be 1
        (b"1\x00", "it holds a NUL byte"),
        (b"5 m\xff", "it is not valid UTF-8"),
        (b"1e400 m", "its value in meter (0x2001) is too large for a double"),
        (b"1e308 km", "its value in meter (0x2001) is too large for a double"),
        (b"-1e400 m", "its value in meter (0x2001) is too large for a double"),
        (b"1e-400 m", "0"),  # too near 0 for a double: 0
        (b"", None),
        (b"x" * 70_000, "the line is longer than 65536 bytes"),
    ]
    rounds = 300
    stdin = b"".join(text + b"\n" for _ in range(rounds) for text, _ in kinds)
    result = run("parse", "m", stdin=stdin)
    answers = [answer for text, answer in kinds if answer is not None and
               re.fullmatch(r"-?[0-9.]+", answer)]
    check(result.status == 2 and result.out == "".join(a + "\n" for a in answers) * rounds,
          "every good line answered", result)
    reports = re.findall(r"^mensura: line ([0-9]+): ParseFailure: (.*)$", result.err, re.M)
    expected = [(str(i * len(kinds) + k + 1), answer) for i in range(rounds)
                for k, (text, answer) in enumerate(kinds)
                if answer is not None and answer not in answers]
    check(reports == expected, "every bad line reported once by its number", result.err[:3000])
    check(len(result.err) < 400 * len(expected), "short reports", result.err[:3000])
    # The caret stands under the NUL byte, shown as a blank.
    result = expect(["parse", "m"], "2\n", status=2, stdin=b"1\x002 m\n2 m\n")
    check(marked_text(result.err) == ("1 2 m", " "), "the NUL byte", result)
    # As JSON too, one object a line.
    result = run("parse", "--json", "m", stdin=stdin[:2_000_000])
    failures = [json.loads(line) for line in result.err.splitlines()]
    check([str(f["line"]) for f in failures] == [line for line, _ in expected[:len(failures)]]
          and len(failures) > 100, "the failures as JSON", result.err[:3000])


def test_convert_refuses_what_is_no_finite_double():
    cases = [
        ("1", "1000000", None),
        ("1e308", None, "cannot convert 1e308 kilometer (0x2009) into millimeter (0x200E): "
                        "the value is too large for a double"),
        ("1e400", None, "'1e400' is too large for a double"),
        ("-1e999999999999", None, "'-1e999999999999' is too large for a double"),
        ("1" + "0" * 400, None, "is too large for a double"),
        ("inf", None, "'inf' is not a finite number"),
        ("-infinity", None, "'-infinity' is not a finite number"),
        ("nan", None, "'nan' is not a finite number"),
        ("1e-400", "0", None),
        ("-0." + "0" * 400 + "1", "-0", None),
        ("4e-324", twelve(5e-324 * 1e6), None),  # the least denormal still is one
        ("1\x002", None, "cannot read '1\\x002' as a number"),
    ]
    stdin = "".join(value + "\n" for value, _, _ in cases)
    result = run("convert", "km", "mm", stdin=stdin)
    answers = [answer for _, answer, _ in cases if answer is not None]
    check(result.status == 2 and result.out == "".join(a + "\n" for a in answers), "answers",
          result)
    errors = result.err.splitlines()
    failing = [(n + 1, message) for n, (_, answer, message) in enumerate(cases) if answer is None]
    check(len(errors) == len(failing), "one line a failure", result)
    for line, (number, message) in zip(errors, failing):
        check(line.startswith(f"mensura: line {number}: ") and message in line, message, result)
    # The largest double converts; from the command line too, the others fail.
    expect(["convert", "1.7976931348623157e308", "m", "m"], "1.79769313486e+308\n")
    for value in ["1e308", "inf", "1e400"]:
        result = expect(["convert", value, "km", "mm"], "", status=2)
        check("too large" in result.err or "not a finite" in result.err, value, result)


def test_parse_format_and_interactive_refuse_infinities():
    result = expect(["parse", "1e400 m", "m"], "", status=2)
    check(result.err == "mensura: ParseFailure: its value in meter (0x2001) is too large for a "
          "double\n  1e400 m\n  ^~~~~~~\n", "parse", result)
    result = expect(["parse", "--json", "1e308 km", "m"], "", status=2)
    check(json.loads(result.err)["error"] == "ParseFailure", "parse --json", result)
    result = expect(["format", "1e308", "m", "--symbol", "mm"], "", status=2)
    check("the value is too large for a double" in result.err, "format into mm", result)
    for value in ["inf", "nan", "1e400"]:
        result = expect(["format", value, "m"], "", status=2)
        check(f"'{value}' is" in result.err, f"format {value}", result)
    # A text too large for a double is a text that does not read; so is a
    # value that becomes too large in the unit asked for.
    result = expect(["interactive"], f"{HAVE}{HAVE}{WANT}{HAVE}{WANT}  1e+300 m\n{HAVE}\n",
                    stdin="1e400 m\n1e300 m\nfm\n1e300 m\nm\n")
    check(result.err.count("too large for a double") == 2 and
          "its value in femtometer (0x2012) is too large" in result.err, "interactive", result)


def stdin_of(path, *arguments, stdout=subprocess.PIPE):
    """Runs the tool with a file or folder opened as its standard input."""
    descriptor = os.open(path, os.O_RDONLY)
    try:
        completed = subprocess.run([TOOL, *arguments], stdin=descriptor, stdout=stdout,
                                   stderr=subprocess.PIPE, env=ENVIRONMENT, timeout=120)
    finally:
        os.close(descriptor)
    out = completed.stdout.decode("utf-8") if completed.stdout is not None else ""
    return Result(completed.returncode, out, completed.stderr.decode("utf-8"))


def test_read_and_write_errors_exit_3():
    folder = os.path.dirname(os.path.abspath(__file__))
    for arguments, out in [(["parse", "m"], ""), (["convert", "ft", "m"], ""),
                           (["interactive"], f"{HAVE}\n")]:
        result = stdin_of(folder, *arguments)
        check(result.status == 3 and result.out == out and
              result.err == "mensura: cannot read standard input: Is a directory\n",
              f"{arguments}: a folder as input", result)
    if not os.path.exists("/dev/full"):
        return
    # A full disk: one message, also for a long stream, which stops there.
    with tempfile.NamedTemporaryFile() as lines, open("/dev/full", "wb") as full:
        lines.write(b"5\n" * 200_000)
        lines.flush()
        for arguments in [["parse", "5 ft", "m"], ["list"], ["show", "ft"], ["--help"],
                          ["format", "1", "m"], ["--version"], ["parse", "m"],
                          ["convert", "ft", "m"], ["interactive"]]:
            result = stdin_of(lines.name, *arguments, stdout=full)
            check(result.status == 3 and result.err.endswith(
                "mensura: cannot write standard output: No space left on device\n") and
                len(result.err) < 2000, f"{arguments} > /dev/full", result.err[-2000:])


def test_each_answer_comes_before_the_next_line():
    # Fed a line at a time through a pipe, the tool writes each answer, or
    # its failure in order among the answers, before it has the next line.
    import select
    for arguments, exchanges in [
            (["parse", "m"], [("5 ft", "1.524\n"),
                              ("5 fleet", "mensura: line 2: ParseFailure: 'fleet' is not a known "
                                          "unit or mark\n  5 fleet\n    ^~~~~\n"),
                              ("6 in", "0.1524\n")]),
            (["convert", "--json", "ft", "m"],
             [("5", '{"line":1,"input":"5","value":1.524,"text":"1.524","unit":8193}\n'),
              ("x", '{"line":2,"input":"x","error":"ParseFailure","message":"cannot read \'x\' '
                    'as a number; convert takes plain numbers, parse reads units"}\n')])]:
        process = subprocess.Popen([TOOL, *arguments], stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                   env=ENVIRONMENT)
        try:
            for text, answer in exchanges:
                process.stdin.write(text.encode("utf-8") + b"\n")
                process.stdin.flush()
                got = b""
                while len(got) < len(answer.encode("utf-8")):
                    ready = select.select([process.stdout], [], [], 30)[0]
                    chunk = os.read(process.stdout.fileno(), 4096) if ready else b""
                    check(chunk != b"", f"{arguments}: the answer to {text!r}, with the input "
                          f"still open", got)
                    got += chunk
                check(got.decode("utf-8") == answer, f"{arguments}: {text!r}", got)
            process.stdin.close()
            check(process.wait(timeout=60) == 2 and process.stdout.read() == b"",
                  f"{arguments}: nothing more, exit 2")
        finally:
            if process.poll() is None:
                process.kill()
                process.wait()
            process.stdout.close()


def test_streams_a_million_lines_in_flat_memory():
    count = 1_000_000
    result, peak = run_measured(["parse", "m"], b"5 ft\n" * count)
    check(result.status == 0 and result.err == "", "no failure", result.err[:1000])
    check(result.out == "1.524\n" * count, f"{count} answers")
    check(within_memory_bound(peak), f"{peak} KB, at most {MEMORY_BOUND_KB} KB")


def test_interactive_under_bad_lines():
    # A NUL byte fails a text and a unit alike; CRLF line ends are line ends;
    # a line too long is reported and the question comes again.
    result = expect(["interactive"],
                    f"{HAVE}{HAVE}{WANT}{WANT}  {twelve(5 * 0.3048)} m\n"
                    f"{HAVE}{HAVE}{WANT}  60 in\n{HAVE}\n",
                    stdin=b"1\x002 m\r\n5 ft\r\nm\x00x\r\nm\r\n" + b"x" * 70_000 +
                    b"\n5 ft\nin\n")
    failures = result.err.split("mensura: ")[1:]
    check(len(failures) == 3 and failures[0].startswith("ParseFailure: it holds a NUL byte") and
          failures[1] == "'m\\x00x' holds a NUL byte\n" and
          failures[2] == "the line is longer than 65536 bytes\n", "three failures", result)


# the tool as a whole ----------------------------------------------------------

def test_help_for_the_tool_and_every_command():
    tool = succeed("--help")
    check(tool.out == succeed("help").out == succeed("-h").out, "help, --help and -h")
    check("--version" in tool.out and '"You have:"' in tool.out and '"You want:"' in tool.out,
          "the version and the interactive mode", tool)
    for command in ["convert", "parse", "format", "list", "show", "interactive"]:
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


def project_version():
    """The version in the project's CMakeLists.txt, two folders above this file."""
    root = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
    with open(os.path.join(root, "CMakeLists.txt"), encoding="utf-8") as cmake:
        found = re.search(r"project\(Mensura VERSION ([0-9.]+)", cmake.read())
    check(found is not None, "the version of the project")
    return found.group(1)


def test_version():
    expect(["--version"], f"mensura {project_version()}\n")


# interactive -----------------------------------------------------------------

def test_interactive_converts_each_text_into_the_unit_asked_for():
    result = expect(["interactive"],
                    f"{HAVE}{WANT}  {twelve(66 * 0.0254)} m\n"
                    f"{HAVE}{WANT}  {twelve(5 * 12)} in\n"
                    f"{HAVE}{WANT}  {twelve(150 * 0.45359237)} kg\n"
                    f"{HAVE}\n",
                    stdin="5 ft 6 in\nm\n5′\n0x2016\n150 lb\nkg\n")
    check(result.err == "", "nothing on standard error", result)
    # --interactive is the same loop.
    expect(["--interactive"], f"{HAVE}{WANT}  0.3048 m\n{HAVE}\n", stdin="1 ft\nm\n")


def test_interactive_reports_failures_and_asks_again():
    stdin = "5 feets\n\n5 kg\nm\n5 kg\nfleet\ng\n"
    result = expect(["interactive"], f"{HAVE}{HAVE}{HAVE}{WANT}{HAVE}{WANT}{WANT}  5000 g\n"
                    f"{HAVE}\n", stdin=stdin)
    # A text that does not read is reported at once, a blank line is asked
    # again, a text of another kind when the unit is known, and a unit that
    # is not known asks for the unit again.
    failures = result.err.split("mensura: ")[1:]
    check(len(failures) == 3, "three failures", result)
    check(failures[0].startswith("ParseFailure: 'feets' is not a known unit or mark\n") and
          marked_text(failures[0]) == ("5 feets", "feets"), "feets", result)
    check(failures[1].startswith("ParseFailure: it reads as a mass (Mass), not a length\n") and
          marked_text(failures[1]) == ("5 kg", "5 kg"), "kg into m", result)
    check(failures[2].startswith("'fleet' is not a known unit"), "fleet", result)


def test_interactive_reads_as_asked():
    result = expect(["interactive", CATALOGUE], f"{HAVE}{WANT}  75 kg\n{HAVE}{WANT}  1 kg\n"
                    f"{HAVE}\n", stdin="150 lb\nkg\n2 lb\nkg\n")
    check(result.err.count("\n") == 1 and result.err.startswith("mensura: note: 'lb' is read "
                                                                 "as pound (meter)"),
          "one note", result)
    expect(["interactive", "--locale", "zh"], f"{HAVE}{WANT}  15 mL\n{HAVE}\n",
           stdin="1 tbsp\nmL\n")


def test_no_command_on_a_terminal_starts_the_interactive_loop():
    import pty
    import select
    main, terminal = pty.openpty()
    process = subprocess.Popen([TOOL], stdin=terminal, stdout=subprocess.PIPE,
                               stderr=subprocess.PIPE, env=ENVIRONMENT)
    os.close(terminal)
    try:
        # Ctrl-D at the start of a line ends the input of a terminal.
        os.write(main, "5 ft 6 in\nin\n\x04".encode("utf-8"))
        out, err = process.communicate(timeout=60)
    finally:
        if process.poll() is None:
            process.kill()
        # Whatever the terminal echoed.
        while select.select([main], [], [], 0)[0]:
            try:
                if not os.read(main, 4096):
                    break
            except OSError:
                break
        os.close(main)
    result = Result(process.returncode, out.decode("utf-8"), err.decode("utf-8"))
    check(result.status == 0 and result.out == f"{HAVE}{WANT}  66 in\n{HAVE}\n" and
          result.err == "", "the loop on a terminal", result)


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
