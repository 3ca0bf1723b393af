#!/usr/bin/env python3
"""The first and simplest part of a selection as numpy does it: which products have flow and pressure within their limits.

Reads tasks, one a line, and answers each when it is done: "make PRODUCTS DUTIES" makes arrays, "limits" asks all pairs.
"""
import sys

import numpy as np

random = np.random.default_rng(20)


def make(products, duties):
    middle = np.exp(random.uniform(np.log(20.0), np.log(800.0), products)).astype(np.float32)
    limits = [middle / np.float32(3), middle * np.float32(3), np.full(products, 5, np.float32), np.full(products, 600, np.float32)]
    qv = np.exp(random.uniform(np.log(10.0), np.log(1500.0), duties)).astype(np.float32)
    dp = random.uniform(10.0, 300.0, duties).astype(np.float32)
    return [column[np.newaxis, :] for column in limits], qv[:, np.newaxis], dp[:, np.newaxis]


def limits():
    (qvmin, qvmax, dpmin, dpmax), qv, dp = arrays
    return np.count_nonzero((qv >= qvmin) & (qv <= qvmax) & (dp >= dpmin) & (dp <= dpmax), axis=1)


arrays = None
for line in sys.stdin:
    words = line.split()
    if words[0] == "make":
        arrays = make(int(words[1]), int(words[2]))
    else:
        assert limits().shape == (arrays[1].shape[0],)
    print("done", flush=True)
