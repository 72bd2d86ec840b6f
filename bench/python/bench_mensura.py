#!/usr/bin/env python3
"""Times the Python package mensura, by hand (not a test): prints medians and ratios.

    MENSURA_LIBRARY=build/libmensura.so PYTHONPATH=python python3 bench/python/bench_mensura.py

Cases: ConvertArray on 10^7 doubles against numpy's `a * factor`; convert of
one float (aim: under 1 µs); parse of one text (under 2 µs); parse of 10^5
texts (under 0.5 µs a text). With pint installed, the same cases through pint
side by side, as a ratio. --quick runs fewer repeats.
"""

import argparse
import statistics
import sys
import time

import numpy as np

import mensura


def median_seconds(function, repeats, inner=1):
    """The median time of one call of function over `repeats` runs of `inner` calls."""
    times = []
    for _ in range(repeats):
        start = time.perf_counter()
        for _ in range(inner):
            function()
        times.append((time.perf_counter() - start) / inner)
    return statistics.median(times)


def show(name, seconds, per=1, unit="µs", goal=None):
    scale = {"µs": 1e6, "ms": 1e3, "ns": 1e9}[unit]
    value = seconds / per * scale
    mark = ""
    if goal is not None:
        mark = f"  (aim < {goal} {unit}: {'met' if value < goal else 'NOT met'})"
    print(f"  {name:<46} {value:10.3f} {unit}{mark}")
    return value


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--quick", action="store_true")
    args = parser.parse_args()
    repeats = 5 if args.quick else 15
    print(f"mensura from {mensura.library_path}; numpy {np.__version__}")
    try:
        import pint

        ureg = pint.UnitRegistry()
        print(f"pint {pint.__version__}")
    except ImportError:
        ureg = None
        print("pint not installed: no comparison")

    results = {}

    print("\nArrays: 10^7 doubles, ft -> m")
    a = np.random.default_rng(1).normal(0.0, 1000.0, 10_000_000)
    factor = mensura.conversion_factor("ft", "m")
    results["array"] = median_seconds(lambda: mensura.convert(a, "ft", "m"), repeats)
    results["numpy"] = median_seconds(lambda: a * factor, repeats)
    show("mensura.convert(array) [ConvertArray]", results["array"], unit="ms")
    show("numpy a * factor", results["numpy"], unit="ms")
    print(f"  ratio mensura / numpy: {results['array'] / results['numpy']:.2f}")
    if ureg is not None:
        q = ureg.Quantity(a, "ft")
        results["pint_array"] = median_seconds(lambda: q.to("m").magnitude, repeats)
        show("pint Quantity(array).to('m')", results["pint_array"], unit="ms")
        print(f"  ratio pint / mensura: {results['pint_array'] / results['array']:.2f}")

    print("\nOne float, ft -> m")
    n = 100_000
    results["scalar"] = median_seconds(lambda: mensura.convert(5.5, "ft", "m"), repeats, n)
    show("mensura.convert(5.5, 'ft', 'm')", results["scalar"], goal=1)
    if ureg is not None:
        results["pint_scalar"] = median_seconds(
            lambda: ureg.Quantity(5.5, "ft").to("m").magnitude, repeats, n // 20)
        show("pint Quantity(5.5, 'ft').to('m')", results["pint_scalar"])
        print(f"  ratio pint / mensura: {results['pint_scalar'] / results['scalar']:.1f}")

    print("\nOne text into inches")
    results["parse"] = median_seconds(lambda: mensura.parse("5′-6 1/2″", "in"), repeats, n)
    show("mensura.parse('5′-6 1/2″', 'in')", results["parse"], goal=2)
    results["parse_simple"] = median_seconds(lambda: mensura.parse("66.5 in", "in"), repeats, n)
    show("mensura.parse('66.5 in', 'in')", results["parse_simple"], goal=2)
    if ureg is not None:
        results["pint_parse"] = median_seconds(
            lambda: ureg.Quantity("66.5 inch").to("inch").magnitude, repeats, n // 20)
        show("pint Quantity('66.5 inch').to('inch')", results["pint_parse"])
        print(f"  ratio pint / mensura ('66.5 in'): {results['pint_parse'] / results['parse_simple']:.1f}")

    print("\n10^5 texts into metres")
    texts = [f"{i % 97}′-{i % 12} 1/2″" if i % 2 else f"{i * 0.01:.2f} m" for i in range(100_000)]
    results["many"] = median_seconds(lambda: mensura.parse(texts, "m"), repeats)
    show("mensura.parse(list of 10^5) per text", results["many"], per=len(texts), goal=0.5)
    series = __import__("pandas").Series(texts)
    results["many_series"] = median_seconds(lambda: mensura.parse(series, "m"), repeats)
    show("mensura.parse(Series of 10^5) per text", results["many_series"], per=len(texts), goal=0.5)
    if ureg is not None:
        simple = [f"{i * 0.01:.2f} meter" for i in range(100_000)]
        subset = simple[:5000]
        results["pint_many"] = median_seconds(
            lambda: [ureg.Quantity(t).to("meter").magnitude for t in subset], max(3, repeats // 3))
        show("pint Quantity(text) a text ('x.xx meter')", results["pint_many"], per=len(subset))
        print(f"  ratio pint / mensura per text: "
              f"{(results['pint_many'] / len(subset)) / (results['many'] / len(texts)):.1f}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
