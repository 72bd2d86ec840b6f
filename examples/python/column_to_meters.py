#!/usr/bin/env python3
"""Reads a column of lengths written every which way into metres.

    column_to_meters.py lengths.csv [--column length] [--partitions 3] [--check]

The column is read with pandas and converted by one call of mensura.parse
(ParseMany underneath); then the same on a Dask data frame, one call a
partition through map_partitions. --check compares both with the column
expected_m and with each other, and exits 1 when they differ.
"""

import argparse
import math
import sys

import pandas as pd

import mensura


def to_meters(texts: pd.Series) -> pd.Series:
    """The texts as metres, NaN where a text does not read; the index stays."""
    return mensura.parse(texts, "m", everyday=True, errors="nan")


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("csv")
    parser.add_argument("--column", default="length")
    parser.add_argument("--partitions", type=int, default=3)
    parser.add_argument("--check", action="store_true")
    args = parser.parse_args()

    frame = pd.read_csv(args.csv, dtype={args.column: str})
    frame["m"] = to_meters(frame[args.column])
    print("pandas:")
    print(frame.to_string(index=False))

    import dask.dataframe as dd

    lazy = dd.from_pandas(frame.drop(columns=["m"]), npartitions=args.partitions)
    meters = lazy[args.column].map_partitions(to_meters, meta=(args.column, "f8"))
    from_dask = meters.compute()
    print(f"dask, {lazy.npartitions} partitions:", from_dask.tolist())

    if not args.check:
        return 0
    failures = []
    for part, got, expected in zip(frame["part"], frame["m"], frame["expected_m"]):
        if math.isnan(got) or abs(got - expected) > 1e-12 * max(1.0, abs(expected)):
            failures.append(f"{part}: {got!r}, expected {expected!r}")
    if from_dask.index.tolist() != frame.index.tolist() or from_dask.tolist() != frame["m"].tolist():
        failures.append(f"dask gave {from_dask.tolist()}, pandas {frame['m'].tolist()}")
    for failure in failures:
        print("FAILED", failure, file=sys.stderr)
    print("checked", len(frame), "lengths:", "FAILED" if failures else "OK")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
