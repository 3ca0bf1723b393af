"""ask.py DATABASE PICTURE: what the installed package answers, and the libraries that it takes, a line each."""
import sys

import tavd

damper = tavd.open(sys.argv[1])["DMP", "QZDA-160"]
damper.flow_diagram(qv=50, dp=60).save(sys.argv[2])
print(tavd.__version__, round(damper.calc(50, 60).position, 2))
print(*sorted({line.split()[-1] for line in open("/proc/self/maps") if "libtavd" in line}), sep="\n")
