#!/usr/bin/env python3
"""Writes oscillators.table: what oscillators send, worked out from the formulas without the program.

A case is a line of settings and a line "tick:value ..." with what is sent, ticks counted from 1. Values are before
clamping. Run it in its folder after a formula has been changed on purpose.
"""
from math import asin, floor, pi, sin

TICKS = 700
CASES = [
    # name, type, speed, min, max, detail
    *[(f"{t} detail {d}", t, 480, 0, 127, d) for t in ("sin", "tri", "saw") for d in (1, 10)],
    ("pulse", "pulse", 480, 0, 127, 10),
    ("random", "random", 60, 0, 127, 10),
    *[(f"{t} inverted", t, 97, 100, 20, 3) for t in ("sin", "tri", "saw", "pulse")],
    ("random inverted", "random", 120, 100, 20, 1),
    *[(f"{t} range 0", t, 50, 64, 64, 10) for t in ("sin", "tri", "saw", "pulse", "random")],
    ("sin below nothing", "sin", 240, -30, 10, 2),
    ("bend", "sin", 333, 0, 16383, 7),
    ("bend saw down", "saw", 333, 16383, 0, 25),
    ("tri slow", "tri", 30720, 0, 127, 1),
    ("speed 1", "sin", 1, 0, 127, 1),
    ("pulse speed 0", "pulse", 0, 3, 9, 1),
    ("saw faster than its steps", "saw", 40, 0, 127, 1),
    ("unknown", "square", 200, 10, 90, 5),
]


def sent(kind, speed, first, last, detail):
    state = 0  # of oscillator 0
    low, span, inverted = min(first, last), abs(last - first), last - first < 0
    growth = {"pulse": 2.0, "random": 1.0, "saw": span + 1}.get(kind, 2 * pi)
    phase, before, counter = 0.0, -1, 0
    for tick in range(1, TICKS + 1):
        old = phase
        phase += growth / max(speed, 1) * 1
        if kind == "pulse":
            value = int(phase) % 2 * span + low
        elif kind == "random":
            if int(old) % 2 == int(phase) % 2:
                continue
            state = (state * 1103515245 + 12345) % 2**32
            value = floor(low + state // 65536 % 32768 * (span / 32767.0) + 0.5)
        elif kind == "tri":
            value = floor((asin(sin(phase)) + pi / 2) / pi * span + low + 0.5)
        elif kind == "saw":
            value = floor(phase + 0.5) % (span + 1) + low
        else:
            value = floor((sin(phase) + 1) * 0.5 * span + low + 0.5)
        if inverted:
            value = span - (kind == "saw") + 2 * low - value
        if value == before:
            continue
        counter += 1
        if kind not in ("pulse", "random") and counter % detail:
            continue
        before = value
        yield tick, value


with open("oscillators.table", "w", encoding="utf-8", newline="\n") as table:
    for name, kind, speed, first, last, detail in CASES:
        print(f"{name}|{kind}|{speed}|{first}|{last}|{detail}", file=table)
        print(" ".join(f"{tick}:{value}" for tick, value in sent(kind, speed, first, last, detail)), file=table)
