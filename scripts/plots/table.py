#!/usr/bin/python3
"""The curves of a sheet as a table, a row for each point: table.py SHEET.json"""

import sys

import curves

number = 0
for family, members in curves.read(sys.argv[1]).items():
    for curve in members:
        for x, y in zip(curve["x"], curve["y"]):
            print(number, family, f"{curve['value']:g}", x, y)
        number += 1
