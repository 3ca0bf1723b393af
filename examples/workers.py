"""Selects products for a whole schedule on worker processes, here or on other machines.

    workers.py DATABASE SCHEDULE.csv [SCHEDULER]

DATABASE is a file that each machine has, or the name of a database on a server; SCHEDULER the address of Dask's scheduler,
such as tcp://10.0.0.5:8786. Without one two workers are started on this machine.
"""

import sys

import dask.dataframe
import pandas
import tavd.dask
from distributed import Client


def main() -> None:
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__)
    database, schedule, *scheduler = sys.argv[1:]
    rooms = dask.dataframe.from_pandas(pandas.read_csv(schedule, sep=";", decimal=","), npartitions=4, sort=False)
    with Client(*scheduler) if scheduler else Client(n_workers=2, threads_per_worker=1, dashboard_address=None):
        answer = tavd.dask.select(database, rooms, room_damping=15, top=1).compute()
    print(answer[["room", "terminal", "fitting", "id", "description"]].to_string(index=False))


if __name__ == "__main__":  # workers read this file too
    main()
