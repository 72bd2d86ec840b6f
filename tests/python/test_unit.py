"""mensura.Unit, groups and units against the catalogue functions."""

import pytest

import mensura


def test_unit_by_key_and_id():
    ft = mensura.Unit("ft")
    assert ft.id == 0x2017 and ft == mensura.Unit(0x2017) == mensura.Unit("英尺")
    assert mensura.Unit(0x202017) == ft  # a symbol id names its unit type
    assert (ft.name, ft.name_zh) == ("foot", "英尺")
    assert ft.group == 0x2000 and ft.group_name == "Length"
    assert ft.dimensions == (1, 0, 0, 0, 0, 0, 0)
    assert ft.factor == 0.3048
    names = [s.name for s in ft.symbols]
    assert names[:2] == ["foot", "ft"]
    assert all(s.id & 0xFFFFF == ft.id for s in ft.symbols)
    assert "foot" in repr(ft)
    assert len({ft, mensura.Unit("foot")}) == 1


def test_units_of_other_kinds():
    newton = mensura.Unit("newton")
    assert newton.dimensions == (1, 1, -2, 0, 0, 0, 0)
    assert newton.group_name == "Force" and newton.factor > 0
    celsius = mensura.Unit("°C")
    assert celsius.factor == 0.0  # a scale with an offset has no factor
    assert mensura.Unit("米").name_zh == "米"


def test_unknown_units_raise():
    for key in ("nope", 0x2FFF, 0x2000):
        with pytest.raises(mensura.UnitError):
            mensura.Unit(key)
    with pytest.raises(mensura.UnitError):
        mensura.units("No such group")


def test_groups_and_units():
    groups = mensura.groups()
    assert len(groups) == 68
    length = [g for g in groups if g.name == "Length"][0]
    assert length.id == 0x2000 and length.name_zh
    by_name = mensura.units("Length")
    assert by_name == mensura.units(0x2000) == mensura.units(length) == mensura.units(length.name_zh)
    assert mensura.Unit("ft") in by_name and mensura.Unit("kg") not in by_name
    assert by_name[0].factor == 1.0
    total = sum(len(mensura.units(g)) for g in groups)
    assert total == 773
