#!/usr/bin/python3
"""The Python package beside NumPy and the C calls under it. Prints its part of docs/performance.md.

    python_bench.py DATABASE [--smoke]      a database of `tavd db synth`; the package is found through PYTHONPATH

Exits with 1 if a figure that is wanted is missed. Times are medians; two that are compared are taken in turn.
"""

import ctypes
import gc
import statistics
import subprocess
import sys
import time

import numpy as np
import pandas as pd

import tavd
from tavd import _duties, _results, _tables, c

MOST_IMPORT = 20.0  # ms beyond numpy
MOST_POINT = 3.0  # us
MOST_ARRAY = 1.1  # times the C call
MOST_SELECT = 1.1  # times the C call and the making of the table

smoke = "--smoke" in sys.argv
RUNS = 3 if smoke else 21
POINTS = 10_000 if smoke else 1_000_000
DUTIES = 20 if smoke else 1000
missed = 0


def row(what, detail, ours, other, told, is_met):
    global missed
    if not is_met:
        missed += 1
    print(f"| {what} | {detail} | {ours} | {other} | {told}{'' if is_met else ' **missed**'} |")


def seconds(work):
    start = time.perf_counter()
    work()
    return time.perf_counter() - start


def imports():
    script = "import time, numpy; start = time.perf_counter(); import tavd; print(time.perf_counter() - start)"
    times = [
        float(subprocess.run([sys.executable, "-c", script], check=True, capture_output=True, text=True).stdout) * 1e3
        for _ in range(RUNS + 1)
    ]
    ours = statistics.median(times[1:])  # the first one compiles
    row(
        "`import tavd`",
        "after `import numpy`",
        f"{ours:.1f} ms",
        "",
        f"at most {MOST_IMPORT:.0f} ms",
        ours <= MOST_IMPORT,
    )


def single(product):
    calls = 20 if smoke else 200
    product.calc(50.0, 60.0)

    def slice_of(work):
        start = time.perf_counter()
        for _ in range(calls):
            work(50.0, 60.0)
        return (time.perf_counter() - start) / calls * 1e6

    for detail, work in (
        ("all answers", product.calc),
        ('`want=("position",)`', lambda qv, dp: product.calc(qv, dp, want=("position",))),
    ):
        ours = statistics.median(slice_of(work) for _ in range(RUNS * 20))
        row("`calc` of one point", detail, f"{ours:.2f} us", "", f"at most {MOST_POINT:.0f} us", ours <= MOST_POINT)


def standing_ready(product, wanted):
    """Arrays for the C call alone: those that calc makes each time."""
    results, kept = c.tavdn_results(), []
    results.size = ctypes.sizeof(results)
    for field in _results.FIELDS:
        if (
            wanted is None
            or field.name in wanted
            or (field.is_code and field.name in [_results.CODE_OF[w] for w in wanted])
        ) and field.member not in product._calculator.same_everywhere():
            array = np.zeros((POINTS, field.bands), np.int32 if field.is_code else np.float32)
            kept.append(array)
            ctypes.c_void_p.from_buffer(results, getattr(type(results), field.member).offset).value = array.ctypes.data
    return results, kept


def arrays(product):
    random = np.random.default_rng(20)
    qv = random.uniform(product.qv_min, product.qv_max, POINTS).astype(np.float32)
    dp = random.uniform(product.dp_min, product.dp_max, POINTS).astype(np.float32)
    for wanted in (None, ("lw", "lpa"), ("position",)):
        results, kept = standing_ready(product, wanted)
        times = []
        for _ in range(RUNS):
            alone = seconds(
                lambda: c.tavdn_calculate(product._calculator.prepared.address, POINTS, qv, dp, 4.0, results)
            )
            times.append((seconds(lambda: product.calc(qv, dp, want=wanted)), alone))
        del kept
        ratio = statistics.median(ours / alone for ours, alone in times)
        ours, alone = (statistics.median(column) * 1e3 for column in zip(*times))
        detail = "all answers" if wanted is None else ", ".join(f"`{name}`" for name in wanted)
        row(
            f"`calc` of {POINTS:,} points".replace(",", " "),
            detail,
            f"{ours:.1f} ms",
            f"{alone:.1f} ms",
            f"{ratio:.2f}, at most {MOST_ARRAY} times",
            ratio <= MOST_ARRAY,
        )


def selecting(db):
    random = np.random.default_rng(20)
    frame = pd.DataFrame(
        {
            "qv": np.exp(random.uniform(np.log(10), np.log(1500), DUTIES)),
            "dp": random.uniform(10, 300, DUTIES),
            "max_lp": random.uniform(25, 50, DUTIES),
        }
    )
    db.select(frame)
    catalogue = db._selector._catalogue(((),), False)
    lines, own = _duties.lines_of(_tables.columns_of(frame), {})
    duties = _duties.Duties(catalogue, lines, ((),), True)
    times = []
    for _ in range(max(3, RUNS // 3)):
        ours = seconds(lambda: db.select(frame))
        answers = []
        alone = seconds(lambda: answers.append(catalogue.answer(duties, False, 0)))
        made = seconds(lambda: _tables.table(answers[0].columns(own)))
        times.append((ours, alone + made))
    ratio = statistics.median(ours / other for ours, other in times)
    ours, other = (statistics.median(column) * 1e3 for column in zip(*times))
    row(
        f"`select` of {DUTIES} duties",
        f"{catalogue.count} products, top 5",
        f"{ours:.0f} ms",
        f"{other:.0f} ms",
        f"{ratio:.2f}, at most {MOST_SELECT} times",
        ratio <= MOST_SELECT,
    )


def main():
    db = tavd.open(sys.argv[1])
    damper = next(product for product in (db[key] for key in db) if product.kind == c.TAVD_KIND_DAMPER)
    print("\n## Python\n")
    print(
        "The package `tavd`: the C call is `tavdn_calculate` into arrays that stand ready, or `tavdn_select_many` with duties that"
    )
    print("stand ready and the making of the table.\n")
    print("| What | | Python | C call | Wanted |\n|---|---|---:|---:|---|")
    gc.disable()
    imports()
    single(damper)
    arrays(damper)
    selecting(db)
    if missed:
        print(f"{missed} figures of Python miss what they want", file=sys.stderr)
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
