"""Loads libmensura and declares the flat functions of mensura.h for ctypes."""

from __future__ import annotations

import ctypes
import ctypes.util
import glob
import os
from typing import List

__all__ = ["lib", "library_path", "ParseReport"]

_HERE = os.path.dirname(os.path.abspath(__file__))


def _candidates() -> List[str]:
    found: List[str] = []
    env = os.environ.get("MENSURA_LIBRARY")
    if env:
        found.append(env)
    # Written by the CMake install: the library of the same installed tree.
    try:
        from ._library_path import LIBRARY  # type: ignore[import-not-found]

        path = LIBRARY if os.path.isabs(LIBRARY) else os.path.join(_HERE, LIBRARY)
        found.append(os.path.normpath(path))
    except ImportError:
        pass
    # A copy next to the package, then the library folder of the prefix
    # (<prefix>/lib/python3/dist-packages/mensura -> <prefix>/lib).
    for folder in (_HERE, os.path.join(_HERE, "..", ".."), os.path.join(_HERE, "..", "..", "..")):
        for name in ("libmensura.so", "libmensura.so.0"):
            path = os.path.normpath(os.path.join(folder, name))
            if os.path.exists(path):
                found.append(path)
        found.extend(sorted(glob.glob(os.path.join(os.path.normpath(folder), "libmensura.so.*"))))
    return found


def _load() -> "tuple[ctypes.CDLL, str]":
    errors = []
    for path in _candidates():
        try:
            return ctypes.CDLL(path), path
        except OSError as error:
            errors.append(f"{path}: {error}")
            if path == os.environ.get("MENSURA_LIBRARY"):
                # A path that the caller named must load.
                raise OSError(f"MENSURA_LIBRARY names a library that does not load: {error}")
    for name in ("libmensura.so.0", ctypes.util.find_library("mensura")):
        if not name:
            continue
        try:
            return ctypes.CDLL(name), name
        except OSError as error:
            errors.append(f"{name}: {error}")
    raise OSError("libmensura not found; set MENSURA_LIBRARY to its path. Tried: " + "; ".join(errors))


lib, library_path = _load()

_c_int_p = ctypes.POINTER(ctypes.c_int)
_c_double_p = ctypes.POINTER(ctypes.c_double)


class ParseReport(ctypes.Structure):
    """MensuraParseReport of mensura.h."""

    _fields_ = [
        ("size", ctypes.c_size_t),
        ("code", ctypes.c_int),
        ("reason", ctypes.c_int),
        ("start", ctypes.c_size_t),
        ("length", ctypes.c_size_t),
        ("dimensions", ctypes.c_int * 7),
        ("group", ctypes.c_int),
        ("value", ctypes.c_double),
        ("note", ctypes.c_int),
        ("noteStart", ctypes.c_size_t),
        ("noteLength", ctypes.c_size_t),
    ]


def _declare(name: str, restype, argtypes) -> None:
    function = getattr(lib, name)
    function.restype = restype
    function.argtypes = argtypes


_declare("Convert", ctypes.c_int, [ctypes.c_double, ctypes.c_int, _c_double_p, ctypes.c_int])
_declare("ConversionFactor", ctypes.c_double, [ctypes.c_int, ctypes.c_int])
_declare("ConvertArray", ctypes.c_int,
         [ctypes.c_void_p, ctypes.c_void_p, ctypes.c_size_t, ctypes.c_int, ctypes.c_int])
_declare("GetUnitDimensions", ctypes.c_int, [ctypes.c_int, _c_int_p])
_declare("CreateFormatter", ctypes.c_void_p, [ctypes.c_int])
_declare("DestroyFormatter", None, [ctypes.c_void_p])
_declare("FormatterNumberSetting", ctypes.c_int,
         [ctypes.c_void_p, ctypes.c_int, ctypes.c_void_p, ctypes.c_size_t])
_declare("FormatterSymbolStringSetting", ctypes.c_int,
         [ctypes.c_void_p, ctypes.c_int, ctypes.c_int, ctypes.c_void_p, ctypes.c_size_t])
_declare("FormatterReadingSetting", ctypes.c_int, [ctypes.c_void_p, ctypes.c_int, _c_int_p])
_declare("Format", ctypes.c_int,
         [ctypes.c_void_p, ctypes.c_double, ctypes.c_int, ctypes.c_void_p, ctypes.c_size_t,
          ctypes.c_int, _c_double_p])
_declare("Parse", ctypes.c_int, [ctypes.c_void_p, ctypes.c_char_p, _c_double_p, ctypes.c_int])
_declare("ParseMany", ctypes.c_size_t,
         [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_size_t, ctypes.c_int, ctypes.c_void_p,
          ctypes.c_void_p])
_declare("ExplainParse", ctypes.c_int,
         [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int, ctypes.POINTER(ParseReport)])
_declare("GetUnitGroups", ctypes.c_size_t, [_c_int_p])
_declare("GetUnitTypes", ctypes.c_size_t, [ctypes.c_int, _c_int_p])
_declare("GetUnitSymbols", ctypes.c_size_t, [ctypes.c_int, _c_int_p])
_declare("GetDisplayName", ctypes.c_int, [ctypes.c_int, ctypes.c_int, ctypes.c_void_p, ctypes.c_size_t])
_declare("FindUnit", ctypes.c_int, [ctypes.c_char_p, _c_int_p])


def utf16z(text: str) -> bytes:
    """The text as UTF-16LE ended by a zero unit."""
    return text.encode("utf-16-le") + b"\0\0"


def read_utf16z(buffer: "ctypes.Array") -> str:
    """The text before the first zero unit of a buffer from create_string_buffer."""
    raw = buffer.raw
    for i in range(0, len(raw) - 1, 2):
        if raw[i] == 0 and raw[i + 1] == 0:
            return raw[:i].decode("utf-16-le", errors="surrogatepass")
    return raw.decode("utf-16-le", errors="surrogatepass")


def utf16_to_index(text: str, units: int) -> int:
    """The index into text of the UTF-16 unit `units` (two units above U+FFFF)."""
    count = 0
    for index, char in enumerate(text):
        if count >= units:
            return index
        count += 2 if ord(char) > 0xFFFF else 1
    return len(text)

