#!/usr/bin/env python3
"""Makes tide-gauge.csv: a month of water levels every ten minutes, with the faults that real gauges have.

Two tides and their springs and neaps, a storm surge on the 11th, noise of 8 mm; single spikes, an outage of nine
hours on the 16th, missing values, and a level shift of 0.35 m from the 19th to the 24th, when the gauge was knocked.
The same numbers on every machine: the random ones come from the generator below, not from a library.
"""
import datetime
import math
import pathlib

START = datetime.datetime(2024, 3, 1)
STEP_MINUTES = 10
SAMPLES = 31 * 24 * 6
HOUR = 6  # samples


class Numbers:
    """Minimal standard generator (Park and Miller, 1988)."""

    def __init__(self, seed):
        self.state = seed

    def uniform(self):
        self.state = self.state * 48271 % 2147483647
        return self.state / 2147483647

    def normal(self):
        return sum(self.uniform() for _ in range(12)) - 6


def day(date, hour=0):
    return (date - 1) * 24 * HOUR + hour * HOUR


def level(i):
    hours = i * STEP_MINUTES / 60
    tide = 0.92 * math.cos(2 * math.pi * hours / 12.4206) + 0.31 * math.cos(2 * math.pi * (hours - 3) / 12.0)
    diurnal = 0.12 * math.cos(2 * math.pi * (hours - 7) / 23.9345)
    surge = 0.85 * math.exp(-(((hours - 250) / 11) ** 2))
    return 2.4 + tide + diurnal + surge


def main():
    numbers = Numbers(20240301)
    rows = []
    for i in range(SAMPLES):
        value = level(i) + 0.008 * numbers.normal()
        spike = numbers.uniform()
        size = 0.4 + 1.6 * numbers.uniform()
        if spike < 0.006:
            value += size if spike < 0.003 else -size
        if day(19, 7) <= i < day(24, 15):
            value += 0.35
        missing = numbers.uniform() < 0.001
        if day(16, 2) <= i < day(16, 11):
            continue
        time = START + datetime.timedelta(minutes=STEP_MINUTES * i)
        rows.append(f"{time:%Y-%m-%dT%H:%MZ},{'NaN' if missing else f'{value:.3f}'}\n")
    target = pathlib.Path(__file__).with_name("tide-gauge.csv")
    with open(target, "w", encoding="utf-8", newline="") as out:
        out.write("# Water level at a tide gauge, made by make_tide_gauge.py\n")
        out.write("time,level [m]\n")
        out.writelines(rows)


if __name__ == "__main__":
    main()
