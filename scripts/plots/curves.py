"""The curves of a sheet, as `tavd report --data` writes them, for the programs that plot them."""

import json


def read(path):
    """Curves by family, each with what its label says, and the duty."""
    with open(path, encoding="utf-8") as file:
        data = json.load(file)
    curves = data["curves"]["pressure"]["curves"]
    families = {}
    for curve in curves:
        families.setdefault(curve["family"], []).append(curve)
    return families
