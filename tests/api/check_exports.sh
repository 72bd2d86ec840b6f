#!/bin/sh
# Fails when the shared library exports anything beyond its boundary: the flat
# functions, unmangled, and the names of namespace Mensura.
set -eu
library=$1
symbols=$(nm -D --defined-only "$library" | awk '{print $3}' | grep -v '^_init$\|^_fini$\|^MENSURA_' || true)
status=0
for flat in Convert ConversionFactor GetUnitGroups GetUnitTypes FindUnit \
  FormatterNumberSettingChecked CopyUnitGroups CopyUnitTypes CopyUnitSymbols; do
  if ! printf '%s\n' "$symbols" | grep -qx "$flat"; then
    echo "missing flat export: $flat"
    status=1
  fi
done
stray=$(printf '%s\n' "$symbols" | c++filt | grep -v '^Mensura::\|^typeinfo for Mensura::\|^typeinfo name for Mensura::\|^vtable for Mensura::\|^double Mensura::Quantity<0, 0, 0, 0, 0, 0, 0>::s_tolerance$' \
  | grep -vx 'Convert\|ConversionFactor\|CreateFormatter\|DestroyFormatter\|FormatterNumberSetting\|FormatterNumberSettingChecked\|FormatterSymbolStringSetting\|FormatterReadingSetting\|GetUnitDimensions\|ExplainParse\|ConvertArray\|ParseMany\|Format\|Parse\|GetUnitGroups\|GetUnitTypes\|GetUnitSymbols\|CopyUnitGroups\|CopyUnitTypes\|CopyUnitSymbols\|GetDisplayName\|FindUnit' || true)
if [ -n "$stray" ]; then
  echo "exported beyond the boundary:"
  printf '%s\n' "$stray"
  status=1
fi
[ $status -eq 0 ] && echo "exports: $(printf '%s\n' "$symbols" | wc -l) symbols, all on the boundary"
exit $status
