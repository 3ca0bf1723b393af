#!/usr/bin/env python3
"""The work of bench_many as numpy does it: reads the names of tasks, one a line, and answers each when it is done.

Everything is in 32 bits, as the library's arrays are, and written as one writes it with numpy. A task's arrays stand
ready; what is formed on the way is numpy's own.
"""
import sys

import numpy as np

ROWS = 1_000_000
WEIGHTING = np.array([-26.2, -16.1, -8.6, -3.2, 0.0, 1.2, 1.0, -1.1], dtype=np.float32)
ROOM_DAMPING = np.float32(4.0)
TENTH = np.float32(0.1)
TEN = np.float32(10.0)

random = np.random.default_rng(20)
lw = random.uniform(20.0, 80.0, (ROWS, 8)).astype(np.float32)
qv = random.uniform(10.0, 300.0, ROWS).astype(np.float32)
k = np.float32(0.2202)
n = np.float32(0.6781)


def lpa():
    return TEN * np.log10(np.sum(TEN ** ((lw + WEIGHTING - ROOM_DAMPING) * TENTH), axis=1))


def throw():
    return k * qv**n


TASKS = {"lpa": lpa, "throw": throw}
for line in sys.stdin:
    result = TASKS[line.strip()]()
    assert result.dtype == np.float32 and result.shape == (ROWS,)
    print("done", flush=True)
