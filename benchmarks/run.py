#!/usr/bin/env python3
"""Runs every benchmark executable and prints ours/baseline ratios.

A benchmark case "<Case>_Ours" is paired with "<Case>_Baseline" of the same
executable (same run, same machine); the ratio is ours / baseline in CPU time,
so below 1 means faster than the baseline; cases run with UseRealTime()
(names ending in /real_time) compare wall-clock time instead. Cases without a pair are listed too.
"""
import glob
import json
import os
import subprocess
import sys


def main():
    bindir = sys.argv[1] if len(sys.argv) > 1 else "build-bench/bin"
    extra = sys.argv[2:]
    exes = sorted(p for p in glob.glob(os.path.join(bindir, "bench_*")) if os.access(p, os.X_OK))
    if not exes:
        print("no benchmark executables in", bindir)
        return 1
    for exe in exes:
        out = subprocess.run([exe, "--benchmark_format=json"] + extra, capture_output=True, text=True)
        if out.returncode != 0:
            print(os.path.basename(exe), "failed:", out.stderr.strip()[-2000:])
            return 1
        data = json.loads(out.stdout)
        times = {}
        for b in data["benchmarks"]:
            if b.get("run_type", "iteration") != "iteration":
                continue
            # Cases that measure wall-clock time (multi-threaded work) are compared on it.
            key = "real_time" if b["name"].endswith("/real_time") else "cpu_time"
            times[b["name"]] = (b[key], b["time_unit"], b)
        print("==", os.path.basename(exe))
        for name in sorted(times):
            base = name.split("/")[0]
            if not base.endswith("_Ours"):
                continue
            suffix = name[len(base):]
            partner = base[: -len("_Ours")] + "_Baseline" + suffix
            ours = times[name]
            if partner in times:
                baseline = times[partner]
                print("  %-60s ours %10.3f %s  baseline %10.3f %s  ratio %.3f" % (
                    base[: -len("_Ours")] + suffix, ours[0], ours[1], baseline[0], baseline[1], ours[0] / baseline[0]))
            else:
                print("  %-60s ours %10.3f %s  (no baseline)" % (name, ours[0], ours[1]))
        for name in sorted(times):
            if "_Ours" not in name and "_Baseline" not in name:
                print("  %-60s %10.3f %s" % (name, times[name][0], times[name][1]))
    return 0


if __name__ == "__main__":
    sys.exit(main())
