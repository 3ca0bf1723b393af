#!/usr/bin/python3
"""The flow chart of a product with matplotlib: with_matplotlib.py SHEET.json CHART.png FLOW PRESSURE"""

import sys

import curves
import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt

data, picture, flow, pressure = sys.argv[1:]
figure, axes = plt.subplots(figsize=(7.1, 3.2), dpi=150, layout="constrained")
looks = {"position": {"color": "black", "lw": 0.9}, "level": {"color": "tab:red", "ls": "--", "lw": 1}}
for family, members in curves.read(data).items():
    for number, curve in enumerate(members):
        label = {"position": "position", "level": "room level, dB(A)"}[family] if number == 0 else None
        axes.plot(curve["x"], curve["y"], label=label, **looks[family])
        axes.text(curve["x"][-1], curve["y"][-1], f"{curve['value']:g}", fontsize=7)
axes.plot(float(flow), float(pressure), "o", mfc="none", color="tab:blue", label="duty")
axes.set_xscale("log")
axes.set_yscale("log")
axes.grid(which="both")
axes.set_xlabel("Flow $q_v$, l/s")
axes.set_ylabel("Total pressure $\\Delta p_t$, Pa")
axes.secondary_xaxis("top", functions=(lambda q: q * 3.6, lambda q: q / 3.6)).set_xlabel("$q_v$, m³/h")
axes.legend(fontsize=7)
figure.savefig(picture)
