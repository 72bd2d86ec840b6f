"""Converts, formats and parses physical quantities with libmensura.

>>> import mensura
>>> mensura.convert(5.5, "ft", "m")
1.6764000000000001
>>> mensura.parse("5′-6 1/2″", "in")
66.5
>>> mensura.Formatter("zh", decimal_digits=2).format(5.5, "m")
'5.50 米'

Units are named by any key of the parse dictionary ("ft", "metre", "m²",
"米", "degree Celsius"), by a packed id (0x2017, or the text "0x2017") or by
a :class:`Unit`.

The module-level :func:`parse` reads with the catalogue's keys and meanings,
as a new formatter does; ``everyday=True`` adds the everyday reading
(plurals, SI prefixes, sums such as "5 ft 6 in", "lb" as the avoirdupois
pound).
"""

from __future__ import annotations

import ctypes
import math
import threading
import unicodedata
from typing import Any, Dict, List, NamedTuple, Optional, Sequence, Tuple, Union

from . import _lib
from ._lib import lib, library_path, read_utf16z, utf16_to_index, utf16z

try:  # numpy is optional: without it, sequences give lists.
    import numpy as _np
except ImportError:  # pragma: no cover - the tests run with numpy
    _np = None  # type: ignore[assignment]

__all__ = [
    "convert", "parse", "conversion_factor", "find_unit", "Formatter", "Unit", "Group",
    "groups", "units", "MensuraError", "UnitError", "ParseError", "library_path",
    "ENGLISH", "CHINESE", "NumberFormat",
]

ENGLISH = 1033
CHINESE = 2052

SUCCESS, FAILURE, PARSE_FAILURE, NOT_SET, UNIT_MISMATCH = 0, 1, 2, 3, 4


class NumberFormat:
    """The values of Formatter.number_format."""

    SCIENTIFIC_UPPER = 0  # 1.23E+004
    SCIENTIFIC_LOWER = 1  # 1.23e+004
    FIXED = 2  # 12345.68
    GENERAL_UPPER = 3
    GENERAL_LOWER = 4
    NUMBER = 5  # 12,345.68


class MensuraError(ValueError):
    """A call that the library refused."""


class UnitError(MensuraError):
    """An unknown unit, or two units of different dimensions.

    >>> mensura.convert(1.0, "ft", "kg")
    Traceback (most recent call last):
    ...
    mensura.UnitError: cannot convert between 'ft' and 'kg': their dimensions differ
    """


UnitLike = Union[str, int, "Unit"]

# Unit keys looked up once; the catalogue never changes once loaded.
_unit_cache: Dict[Any, int] = {}


def find_unit(unit: UnitLike) -> int:
    """The packed id of a unit given by a key, an id or a Unit.

    >>> hex(mensura.find_unit("ft")), hex(mensura.find_unit("米"))
    ('0x2017', '0x2001')
    """
    try:
        return _unit_cache[unit]
    except (KeyError, TypeError):
        pass
    if isinstance(unit, Unit):
        return unit.id
    if isinstance(unit, bool):
        raise UnitError(f"not a unit: {unit!r}")
    if isinstance(unit, int):
        return unit
    if not isinstance(unit, str):
        raise UnitError(f"not a unit: {unit!r}")
    found = ctypes.c_int(0)
    if lib.FindUnit(utf16z(unit), ctypes.byref(found)) == SUCCESS:
        result = found.value
    else:
        try:
            result = int(unit, 0)
        except ValueError:
            raise UnitError(f"unknown unit: {unit!r}") from None
    _unit_cache[unit] = result
    return result


def _is_array_like(value: Any) -> bool:
    return not isinstance(value, (str, bytes)) and hasattr(value, "__len__")


def convert(value: Any, from_unit: UnitLike, to_unit: UnitLike) -> Any:
    """Converts a value, or an array of values, from one unit into another.

    A float gives a float, bit for bit what the C function Convert gives; a
    numpy array or a sequence gives a numpy array (one call of ConvertArray),
    a pandas Series a Series with the same index.

    >>> mensura.convert(5.5, "ft", "m")
    1.6764000000000001
    >>> mensura.convert([1.0, 2.0], "ft", "in")
    array([12., 24.])

    Raises UnitError for an unknown unit or units of different dimensions.
    """
    # The common case first: a float between two units named by text before.
    f = _unit_cache.get(from_unit) if type(from_unit) is str else None
    t = _unit_cache.get(to_unit) if type(to_unit) is str else None
    if f is None:
        f = find_unit(from_unit)
    if t is None:
        t = find_unit(to_unit)
    if type(value) is not float and _is_array_like(value):
        return _convert_array(value, f, t, from_unit, to_unit)
    out = _c_double()
    code = _Convert(value, f, out, t)
    if code:
        _raise_convert(code, from_unit, to_unit)
    return out.value


_Convert = lib.Convert
_c_double = ctypes.c_double


def _raise_convert(code: int, from_unit: Any, to_unit: Any) -> None:
    if code == UNIT_MISMATCH:
        for unit in (from_unit, to_unit):
            dims = (ctypes.c_int * 7)()
            if lib.GetUnitDimensions(find_unit(unit), dims) != SUCCESS:
                raise UnitError(f"unknown unit: {unit!r}")
        raise UnitError(f"cannot convert between {from_unit!r} and {to_unit!r}: their dimensions differ")
    raise MensuraError(f"the conversion from {from_unit!r} to {to_unit!r} failed (code {code})")


def _convert_array(value: Any, f: int, t: int, from_unit: Any, to_unit: Any) -> Any:
    if _np is None:
        return [convert(float(v), f, t) for v in value]
    index = getattr(value, "index", None) if hasattr(value, "to_numpy") else None
    values = _np.ascontiguousarray(
        value.to_numpy(dtype=_np.float64) if index is not None else value, dtype=_np.float64)
    out = _np.empty_like(values)
    code = lib.ConvertArray(values.ctypes.data, out.ctypes.data, values.size, f, t)
    if code != SUCCESS:
        _raise_convert(code, from_unit, to_unit)
    if index is not None:
        import pandas

        return pandas.Series(out, index=index, name=getattr(value, "name", None))
    return out


def conversion_factor(from_unit: UnitLike, to_unit: UnitLike) -> float:
    """The constant factor from one unit to another; 0.0 where there is none.

    >>> mensura.conversion_factor("ft", "in")
    12.0
    >>> mensura.conversion_factor("°C", "K")
    0.0
    """
    return lib.ConversionFactor(find_unit(from_unit), find_unit(to_unit))


# Names ---------------------------------------------------------------------


def _display_name(id_: int, locale: int = ENGLISH) -> Optional[str]:
    size = 64
    while size <= 1 << 16:
        buffer = ctypes.create_string_buffer(2 * size)
        if lib.GetDisplayName(locale, id_, buffer, size) == SUCCESS:
            return read_utf16z(buffer)
        size *= 4
    return None


def _id_list(function, *args) -> List[int]:
    count = function(*args, None)
    ids = (ctypes.c_int * max(count, 1))()
    function(*args, ids)
    return list(ids[:count])


class Group(NamedTuple):
    """A unit group: its id and display names."""

    id: int
    name: str
    name_zh: str


def groups() -> List[Group]:
    """Every unit group of the catalogue.

    >>> [g.name for g in mensura.groups()][:3]
    ['Dimensionless', 'Length', 'Area']
    """
    return [Group(i, _display_name(i) or "", _display_name(i, CHINESE) or "")
            for i in _id_list(lib.GetUnitGroups)]


def _group_id(group: Union[str, int, Group]) -> int:
    if isinstance(group, Group):
        return group.id
    if isinstance(group, int) and not isinstance(group, bool):
        return group & 0xFF000
    if isinstance(group, str):
        for g in groups():
            if group in (g.name, g.name_zh) or group.lower() == g.name.lower():
                return g.id
        try:
            return find_unit(group) & 0xFF000
        except UnitError:
            pass
    raise UnitError(f"unknown group: {group!r}")


def units(group: Union[str, int, Group]) -> List["Unit"]:
    """The unit types of a group, by name, id or Group.

    >>> [u.name for u in mensura.units("Length")][:2]
    ['meter', 'yottameter']
    """
    return [Unit(i) for i in _id_list(lib.GetUnitTypes, _group_id(group))]


class Symbol(NamedTuple):
    """A symbol of a unit type: its complete id and display names."""

    id: int
    name: str
    name_zh: str


class Unit:
    """A unit type of the catalogue, by key or id.

    >>> ft = mensura.Unit("ft")
    >>> hex(ft.id), ft.name, ft.group_name, ft.factor
    ('0x2017', 'foot', 'Length', 0.3048)
    >>> ft.dimensions
    (1, 0, 0, 0, 0, 0, 0)
    >>> [s.name for s in ft.symbols][:2]
    ['foot', 'ft']
    """

    __slots__ = ("id",)

    def __init__(self, unit: UnitLike) -> None:
        id_ = find_unit(unit) & 0xFFFFF  # the unit type, without a symbol number
        if _display_name(id_) is None or id_ & 0xFFF == 0:
            raise UnitError(f"unknown unit: {unit!r}")
        self.id: int = id_

    def __repr__(self) -> str:
        return f"Unit({self.name!r}, id=0x{self.id:X})"

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Unit) and other.id == self.id

    def __hash__(self) -> int:
        return hash(self.id)

    @property
    def name(self) -> str:
        """The English display name."""
        return _display_name(self.id) or ""

    @property
    def name_zh(self) -> str:
        """The Simplified Chinese display name."""
        return _display_name(self.id, CHINESE) or ""

    @property
    def group(self) -> int:
        """The group id."""
        return self.id & 0xFF000

    @property
    def group_name(self) -> str:
        """The English display name of the group."""
        return _display_name(self.group) or ""

    @property
    def dimensions(self) -> Tuple[int, ...]:
        """The exponents of length, mass, time, current, temperature, amount, luminous intensity."""
        dims = (ctypes.c_int * 7)()
        if lib.GetUnitDimensions(self.id, dims) != SUCCESS:
            raise UnitError(f"no dimensions for 0x{self.id:X}")
        return tuple(dims)

    @property
    def factor(self) -> float:
        """The factor to the group's first unit; 0.0 for a scale with an offset."""
        first = _id_list(lib.GetUnitTypes, self.group)[0]
        return lib.ConversionFactor(self.id, first)

    @property
    def symbols(self) -> List[Symbol]:
        """The symbols, the spelled-out name first."""
        return [Symbol(i, _display_name(i) or "", _display_name(i, CHINESE) or "")
                for i in _id_list(lib.GetUnitSymbols, self.id)]


def _symbol_id(symbol: Union[None, str, int, Symbol], unit: Optional[int] = None) -> int:
    """A complete symbol id from a Symbol, an id, or a symbol's text."""
    if symbol is None:
        return 0
    if isinstance(symbol, Symbol):
        return symbol.id
    if isinstance(symbol, int) and not isinstance(symbol, bool):
        return symbol
    if isinstance(symbol, str):
        candidates = []
        try:
            candidates.append(find_unit(symbol) & 0xFFFFF)
        except UnitError:
            pass
        if unit is not None:
            candidates.append(unit & 0xFFFFF)
        for type_id in candidates:
            for s in _id_list(lib.GetUnitSymbols, type_id):
                if symbol in (_display_name(s), _display_name(s, CHINESE)):
                    return s
        found = _all_symbols().get(symbol)
        if found is not None:
            return found
        if candidates:
            return candidates[0]
    raise UnitError(f"unknown symbol: {symbol!r}")


_symbol_names: Dict[str, int] = {}


def _all_symbols() -> Dict[str, int]:
    """Every symbol's English and Chinese display names; the first symbol of a name wins."""
    if not _symbol_names:
        names: Dict[str, int] = {}
        for group in _id_list(lib.GetUnitGroups):
            for type_id in _id_list(lib.GetUnitTypes, group):
                for s in _id_list(lib.GetUnitSymbols, type_id):
                    for name in (_display_name(s), _display_name(s, CHINESE)):
                        if name:
                            names.setdefault(name, s)
        _symbol_names.update(names)
    return _symbol_names


# Parse reports ---------------------------------------------------------------

_REASONS = {
    1: "{culprit!r} is not a known unit or mark",
    2: "it reads as {found}, not {wanted}",
    3: "its numbers, units and marks do not make one value",
    4: "the text is empty",
    5: "the unit is unknown",
}


def _columns(text: str) -> int:
    return sum(2 if unicodedata.east_asian_width(c) in "WF" else 0 if unicodedata.combining(c) else 1
               for c in text)


class ParseError(MensuraError):
    """A text that did not read, with the library's report of why.

    >>> try:
    ...     mensura.parse("1e-9 km3", "L")
    ... except mensura.ParseError as error:
    ...     print(error)
    ...     print(error.reason, error.start, error.length, error.culprit)
    '1e-9 km3' does not read as a value in liter: 'km3' is not a known unit or mark
      1e-9 km3
           ^~~
    1 5 3 km3

    ``start`` and ``length`` index the Python string; ``dimensions`` and
    ``group`` (with ``group_name``) say what the text reads as, where it reads.
    ``index`` is the place of the text in a list given to parse.
    """

    def __init__(self, text: str, unit: Any, report: Optional["_lib.ParseReport"] = None,
                 index: Optional[int] = None, unit_id: int = 0) -> None:
        self.text = text
        self.unit = unit
        self.index = index
        self.code = report.code if report is not None else PARSE_FAILURE
        self.reason = report.reason if report is not None else 3
        start = report.start if report is not None else 0
        length = report.length if report is not None else 0
        self.start = utf16_to_index(text, start)
        self.length = utf16_to_index(text, start + length) - self.start
        self.dimensions: Tuple[int, ...] = tuple(report.dimensions) if report is not None else (0,) * 7
        self.group = report.group if report is not None else 0
        self.group_name = _display_name(self.group) if self.group else None
        self.culprit = text[self.start:self.start + self.length] if self.length else text
        wanted = _display_name(unit_id & 0xFF000) if unit_id else None
        found = f"a quantity of {self.group_name}" if self.group_name else \
            f"a quantity of dimensions {self.dimensions}"
        reason = _REASONS.get(self.reason, "it does not read").format(
            culprit=self.culprit, found=found,
            wanted=f"a quantity of {wanted}" if wanted else repr(unit))
        unit_name = (_display_name(unit_id & 0xFFFFF) if unit_id else None) or str(unit)
        where = f" (text {index})" if index is not None else ""
        lines = [f"{text!r}{where} does not read as a value in {unit_name}: {reason}"]
        if text:
            lines.append("  " + text)
            if self.length:
                lines.append("  " + " " * _columns(text[:self.start]) + "^" +
                             "~" * max(_columns(self.culprit) - 1, 0))
        super().__init__("\n".join(lines))


# Formatters ------------------------------------------------------------------

_LOCALES = {"en": ENGLISH, "en-us": ENGLISH, "english": ENGLISH,
            "zh": CHINESE, "zh-cn": CHINESE, "zh-hans": CHINESE, "chinese": CHINESE}


def _locale_id(locale: Union[str, int]) -> int:
    if isinstance(locale, int):
        return locale
    try:
        return _LOCALES[locale.lower().replace("_", "-")]
    except KeyError:
        raise ValueError(f"unknown locale: {locale!r} (use 'en', 'zh', 1033 or 2052)") from None


_TEXT_SETTINGS = {  # property: (get, set)
    "negative_sign": (3, 4),
    "decimal_separator": (7, 8),
    "group_separator": (11, 12),
    "positive_sign": (15, 16),
}
_INT_SETTINGS = {"decimal_digits": (5, 6), "number_format": (9, 10)}


class Formatter:
    """Renders values with units as text and reads such text, in English or Chinese.

    Every setting is a keyword of the constructor and a property:
    decimal_digits, decimal_separator, group_separator, group_sizes,
    negative_sign, positive_sign, number_format (a NumberFormat value),
    native_digits (ten characters) and everyday (the everyday reading).
    Give each thread its own Formatter; the module-level parse does so.

    >>> f = mensura.Formatter("en", decimal_digits=3)
    >>> f.format(1.6764, "m")
    '1.676 meter'
    >>> f.format(1.6764, "m", symbol="m")
    '1.676 m'
    >>> f.parse("5 ft 6 in", "in")
    Traceback (most recent call last):
    ...
    mensura.ParseError: '5 ft 6 in' does not read as a value in inch: its numbers, units and marks do not make one value
      5 ft 6 in
    >>> f.everyday = True
    >>> f.parse("5 ft 6 in", "in")
    66.0
    """

    def __init__(self, locale: Union[str, int] = "en", *, decimal_digits: Optional[int] = None,
                 decimal_separator: Optional[str] = None, group_separator: Optional[str] = None,
                 group_sizes: Optional[Sequence[int]] = None, negative_sign: Optional[str] = None,
                 positive_sign: Optional[str] = None, number_format: Optional[int] = None,
                 native_digits: Optional[str] = None, everyday: Optional[bool] = None) -> None:
        self.locale = _locale_id(locale)
        handle = lib.CreateFormatter(self.locale)
        if not handle:
            raise MemoryError("CreateFormatter failed")
        self._handle = ctypes.c_void_p(handle)
        settings = dict(decimal_digits=decimal_digits, decimal_separator=decimal_separator,
                        group_separator=group_separator, group_sizes=group_sizes,
                        negative_sign=negative_sign, positive_sign=positive_sign,
                        number_format=number_format, native_digits=native_digits,
                        everyday=everyday)
        for name, value in settings.items():
            if value is not None:
                setattr(self, name, value)

    def __del__(self) -> None:
        handle = getattr(self, "_handle", None)
        if handle is not None and handle.value:
            self._handle = None
            try:
                lib.DestroyFormatter(handle)
            except Exception:  # the interpreter is shutting down
                pass

    def __repr__(self) -> str:
        return (f"Formatter(locale={self.locale}, decimal_digits={self.decimal_digits}, "
                f"everyday={self.everyday})")

    # Number settings
    def _get_text(self, selector: int) -> str:
        buffer = ctypes.create_string_buffer(2 * 256)
        self._check(lib.FormatterNumberSetting(self._handle, selector, buffer, 256), "read a setting")
        return read_utf16z(buffer)

    def _set_text(self, selector: int, value: str, name: str) -> None:
        data = ctypes.create_string_buffer(utf16z(value))
        self._check(lib.FormatterNumberSetting(self._handle, selector, data, len(value) + 1),
                    f"set {name} to {value!r}")

    def _get_int(self, selector: int) -> int:
        value = ctypes.c_int32()
        self._check(lib.FormatterNumberSetting(self._handle, selector, ctypes.byref(value), 4),
                    "read a setting")
        return value.value

    def _set_int(self, selector: int, value: int, name: str) -> None:
        data = ctypes.c_int32(int(value))
        self._check(lib.FormatterNumberSetting(self._handle, selector, ctypes.byref(data), 4),
                    f"set {name} to {value!r}")

    @staticmethod
    def _check(code: int, what: str) -> None:
        if code != SUCCESS:
            raise MensuraError(f"cannot {what} (code {code})")

    @property
    def group_sizes(self) -> List[int]:
        """The sizes of the digit groups, from the decimal separator leftwards."""
        count = ctypes.c_uint64()
        self._check(lib.FormatterNumberSetting(self._handle, 13, ctypes.byref(count), 0), "read group sizes")
        sizes = (ctypes.c_int32 * max(count.value, 1))()
        self._check(lib.FormatterNumberSetting(self._handle, 13, sizes, max(count.value, 1)),
                    "read group sizes")
        return list(sizes[:count.value])

    @group_sizes.setter
    def group_sizes(self, sizes: Sequence[int]) -> None:
        data = (ctypes.c_int32 * max(len(sizes), 1))(*sizes)
        self._check(lib.FormatterNumberSetting(self._handle, 14, data, len(sizes)),
                    f"set group sizes to {list(sizes)!r}")

    @property
    def native_digits(self) -> str:
        """The ten digits that numbers are rendered with."""
        buffer = ctypes.create_string_buffer(2 * 10)
        self._check(lib.FormatterNumberSetting(self._handle, 0, buffer, 10), "read native digits")
        return buffer.raw.decode("utf-16-le")

    @native_digits.setter
    def native_digits(self, digits: str) -> None:
        raw = digits.encode("utf-16-le")
        if len(raw) != 20:
            raise ValueError("native digits are ten characters of the Basic Multilingual Plane")
        buffer = ctypes.create_string_buffer(raw)
        self._check(lib.FormatterNumberSetting(self._handle, 1, buffer, 10),
                    f"set native digits to {digits!r}")

    @property
    def everyday(self) -> bool:
        """Whether the everyday reading is on (off for a new formatter)."""
        value = ctypes.c_int()
        self._check(lib.FormatterReadingSetting(self._handle, 1, ctypes.byref(value)), "read the reading")
        return bool(value.value)

    @everyday.setter
    def everyday(self, on: bool) -> None:
        value = ctypes.c_int(1 if on else 0)
        self._check(lib.FormatterReadingSetting(self._handle, 2, ctypes.byref(value)), "set the reading")

    # Symbol strings
    def _symbol_string(self, selector: int, symbol: Any) -> Optional[str]:
        id_ = _symbol_id(symbol)
        size = 256
        while True:
            buffer = ctypes.create_string_buffer(2 * size)
            code = lib.FormatterSymbolStringSetting(self._handle, selector, id_, buffer, size)
            if code == SUCCESS:
                return read_utf16z(buffer)
            if code == NOT_SET:
                return None
            if size >= 1 << 16:
                self._check(code, f"read the string of symbol {symbol!r}")
            size *= 16

    def _set_symbol_string(self, selector: int, symbol: Any, text: Optional[str]) -> None:
        id_ = _symbol_id(symbol)
        buffer = ctypes.create_string_buffer(utf16z(text or ""))
        n = len(buffer) // 2
        self._check(lib.FormatterSymbolStringSetting(self._handle, selector, id_, buffer, n),
                    f"set the string of symbol {symbol!r} to {text!r}")

    def formatting_string(self, symbol: Union[str, int, Symbol]) -> Optional[str]:
        """The formatting string of a symbol, or None when none is set."""
        return self._symbol_string(1, symbol)

    def set_formatting_string(self, symbol: Union[str, int, Symbol], text: Optional[str]) -> None:
        """Sets how a symbol is rendered, e.g. "{0} ft {1} in"; None or "" removes it.

        >>> f = mensura.Formatter(decimal_digits=0)
        >>> f.set_formatting_string("x′x″", "{0} ft {1} in")
        >>> f.formatting_string("x′x″")
        '{0} ft {1} in'
        >>> f.format(66.0, "in", symbol="x′x″")
        '5 ft 6 in'
        """
        self._set_symbol_string(2, symbol, text)

    def parsing_string(self, symbol: Union[str, int, Symbol]) -> Optional[str]:
        """The parsing string of a symbol, or None when none is set."""
        return self._symbol_string(3, symbol)

    def set_parsing_string(self, symbol: Union[str, int, Symbol], text: Optional[str]) -> None:
        """Sets an extra text that a symbol reads; None or "" removes it."""
        self._set_symbol_string(4, symbol, text)

    # Text
    def format(self, value: float, unit: UnitLike, symbol: Union[None, str, int, Symbol] = None) -> str:
        """Renders value, given in unit, with a symbol (the unit's default when None).

        >>> mensura.Formatter("zh").format(5.5, "m")
        '5.50 米'
        """
        unit_id = find_unit(unit)
        symbol_id = _symbol_id(symbol, unit_id)
        converted = ctypes.c_double()
        size = 128
        while True:
            buffer = ctypes.create_string_buffer(2 * size)
            code = lib.Format(self._handle, value, unit_id, buffer, size, symbol_id, converted)
            if code == SUCCESS:
                return read_utf16z(buffer)
            if code == UNIT_MISMATCH:
                raise UnitError(f"symbol {symbol!r} does not measure {unit!r}")
            if size >= 1 << 14:
                raise MensuraError(f"cannot format {value!r} in {unit!r} with symbol {symbol!r}")
            size *= 8

    def parse(self, text: Any, unit: UnitLike, *, errors: str = "raise") -> Any:
        """Reads a text, or many, into values in unit.

        One text gives a float; a list or numpy array of texts a numpy array
        (read by one call of ParseMany), a pandas Series a Series with the
        same index. errors="raise" raises ParseError for the first text that
        does not read; errors="nan" gives NaN for it.

        >>> mensura.Formatter().parse(["1 ft", "2 in"], "in")
        array([12.,  2.])
        """
        if errors not in ("raise", "nan"):
            raise ValueError("errors is 'raise' or 'nan'")
        unit_id = find_unit(unit)
        if isinstance(text, str):
            value = ctypes.c_double()
            code = lib.Parse(self._handle, utf16z(text), value, unit_id)
            if code == SUCCESS:
                return value.value
            if errors == "nan":
                return math.nan
            raise self.explain(text, unit, unit_id)
        return self._parse_many(text, unit, unit_id, errors)

    def explain(self, text: str, unit: UnitLike, unit_id: Optional[int] = None,
                index: Optional[int] = None) -> ParseError:
        """The ParseError that says why text does not read in unit."""
        if unit_id is None:
            unit_id = find_unit(unit)
        report = _lib.ParseReport()
        report.size = ctypes.sizeof(_lib.ParseReport)
        lib.ExplainParse(self._handle, utf16z(text), unit_id, ctypes.byref(report))
        return ParseError(text, unit, report, index=index, unit_id=unit_id)

    def _parse_many(self, texts: Any, unit: Any, unit_id: int, errors: str) -> Any:
        if errors not in ("raise", "nan"):
            raise ValueError("errors is 'raise' or 'nan'")
        index = getattr(texts, "index", None) if hasattr(texts, "to_numpy") else None
        items = [t if isinstance(t, str) else "" for t in (texts.to_numpy() if index is not None else texts)]
        if errors == "raise":
            for i, t in enumerate(items):
                if not t or "\0" in t:
                    if "\0" in t:
                        raise ParseError(t, unit, None, index=i, unit_id=unit_id)
                    original = list(texts)[i] if index is None else texts.iloc[i]
                    if not isinstance(original, str):
                        raise TypeError(f"text {i} is not a string: {original!r}")
        n = len(items)
        joined = "\0".join(items) + "\0"
        if joined.count("\0") != n:
            items = [t.replace("\0", "\ufffe") for t in items]  # a zero unit would split a text
            joined = "\0".join(items) + "\0"
        buffer = joined.encode("utf-16-le", errors="surrogatepass")
        if _np is not None:
            values = _np.empty(n, dtype=_np.float64)
            codes = _np.empty(n, dtype=_np.intc)
            values_p, codes_p = values.ctypes.data, codes.ctypes.data
        else:
            values = (ctypes.c_double * max(n, 1))()
            codes = (ctypes.c_int * max(n, 1))()
            values_p, codes_p = ctypes.addressof(values), ctypes.addressof(codes)
        read = lib.ParseMany(self._handle, buffer, n, unit_id, values_p, codes_p) if n else 0
        if read != n and errors == "raise":
            for i in range(n):
                if codes[i] != SUCCESS:
                    raise self.explain(items[i], unit, unit_id, index=i)
        if index is not None:
            import pandas

            return pandas.Series(values, index=index, name=getattr(texts, "name", None))
        return values if _np is not None else list(values[:n])


def _text_property(name: str, get: int, set_: int, doc: str) -> property:
    return property(lambda self: self._get_text(get),
                    lambda self, value: self._set_text(set_, value, name), doc=doc)


def _int_property(name: str, get: int, set_: int, doc: str) -> property:
    return property(lambda self: self._get_int(get),
                    lambda self, value: self._set_int(set_, value, name), doc=doc)


_SETTING_DOCS = {
    "negative_sign": "The sign put before a negative number.",
    "decimal_separator": "The text between the integer and the fraction.",
    "group_separator": "The text between digit groups (with NumberFormat.NUMBER).",
    "positive_sign": "The sign that a positive number may carry when read.",
    "decimal_digits": "How many digits follow the decimal separator.",
    "number_format": "How numbers are rendered: a NumberFormat value.",
}
for _name, (_get, _set) in _TEXT_SETTINGS.items():
    setattr(Formatter, _name, _text_property(_name, _get, _set, _SETTING_DOCS[_name]))
for _name, (_get, _set) in _INT_SETTINGS.items():
    setattr(Formatter, _name, _int_property(_name, _get, _set, _SETTING_DOCS[_name]))


# Module-level parse: one formatter a thread, of each reading.
_local = threading.local()


def _default_formatter(everyday: bool) -> Formatter:
    name = "everyday" if everyday else "catalogue"
    formatter = getattr(_local, name, None)
    if formatter is None:
        formatter = Formatter(ENGLISH, everyday=everyday)
        setattr(_local, name, formatter)
    return formatter


def parse(text: Any, unit: UnitLike, *, everyday: bool = False, errors: str = "raise") -> Any:
    """Reads a text, or a list, numpy array or pandas Series of texts, into unit.

    Reads with the catalogue's keys and meanings, as a new Formatter does;
    everyday=True adds the everyday reading. Each thread has its own English
    formatters for this; use a Formatter for other settings.

    >>> mensura.parse("5′-6 1/2″", "in")
    66.5
    >>> mensura.parse("5 feet", "m", everyday=True)
    1.524
    >>> mensura.parse(["1.7 m", "66 in", "oops"], "m", errors="nan")
    array([1.7   , 1.6764,    nan])
    """
    return _default_formatter(everyday).parse(text, unit, errors=errors)
