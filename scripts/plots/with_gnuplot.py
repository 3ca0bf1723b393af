#!/usr/bin/python3
"""The flow chart of a product with gnuplot: with_gnuplot.py SHEET.json CHART.png FLOW PRESSURE"""

import subprocess
import sys

import curves

data, picture, flow, pressure = sys.argv[1:]
commands = f"""
set terminal pngcairo size 1065,480 font ',13'
set output '{picture}'
set logscale xyx2
set xrange [15:170]
set x2range [15*3.6:170*3.6]
set grid xtics ytics mxtics mytics
set xlabel 'Flow q_v, l/s'
set ylabel 'Total pressure Δp_t, Pa'
set xtics nomirror
set x2tics
set x2label 'q_v, m³/h'
set key outside below
"""
looks = {"position": "lw 1.5 lc 'black'", "level": "lw 1.5 dt 2 lc 'red'"}
titles = {"position": "position", "level": "room level, dB(A)"}
plots = []
for family, members in curves.read(data).items():
    for number, curve in enumerate(members):
        name = f"${family}{number}"
        rows = "\n".join(f"{x} {y}" for x, y in zip(curve["x"], curve["y"]))
        commands += f"{name} << EOD\n{rows}\nEOD\n"
        commands += f"set label '{curve['value']:g}' at {curve['x'][-1]},{curve['y'][-1]} left\n"
        title = f"title '{titles[family]}'" if number == 0 else "notitle"
        plots.append(f"{name} with lines {looks[family]} {title}")
commands += f"$duty << EOD\n{flow} {pressure}\nEOD\n"
plots.append("$duty with points pt 6 ps 2 lw 2 lc 'blue' title 'duty'")
commands += "plot " + ", ".join(plots) + "\n"
subprocess.run(["gnuplot"], input=commands, text=True, check=True)
