#!/usr/bin/env python3
"""Times `rkcalendar render` against its floor and against pcal, and measures its memory.

    python3 benchmarks/render_bench.py [BINDIR]      (default build-bench/bin)

All figures come from the same run on the same machine:
- year PDF: a 13-page wall calendar (de_DE, Bavaria, every feature), best of REPEAT runs;
- floor: the same 13 pages, already compiled to SVG by `rkcalendar render --format svg`,
  drawn with QSvgRenderer into one QPdfWriter document (render_floor); target ours <= 1.5x;
- pcal: Debian's pcal for the same year's twelve months, then ps2pdf (installed when
  missing); the ratio is reported, no target;
- times are wall-clock and CPU (user + system of all threads; on a shared machine the CPU
  time is the steadier figure);
- memory: the peak resident size of a 10-year batch (130 pages) against a single year;
  target <= 1.5x.
"""
import os
import shutil
import subprocess
import sys
import tempfile
import time

YEAR = 2027
REPEAT = 3
A4_POINTS = "595.28x841.89"


def run(cmd, **kwargs):
    """Wall-clock seconds, CPU seconds (user + system, all threads) and peak RSS in KiB of one
    child process."""
    start = time.perf_counter()
    process = subprocess.Popen(cmd, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, **kwargs)
    _, status, usage = os.wait4(process.pid, 0)
    elapsed = time.perf_counter() - start
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit("failed: %s\n%s" % (" ".join(cmd), process.stderr.read().decode(errors="replace")[-2000:]))
    return elapsed, usage.ru_utime + usage.ru_stime, usage.ru_maxrss


def best(cmd, **kwargs):
    """The best wall-clock and the best CPU time of REPEAT runs."""
    runs = [run(cmd, **kwargs) for _ in range(REPEAT)]
    return min(r[0] for r in runs), min(r[1] for r in runs)


def ensure(programs, packages):
    if all(shutil.which(p) for p in programs):
        return True
    subprocess.run(["apt-get", "install", "-y", "-q"] + packages, stdout=subprocess.DEVNULL)
    return all(shutil.which(p) for p in programs)


def main():
    bindir = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 else "build-bench/bin")
    tool = os.path.join(bindir, "rkcalendar")
    floor = os.path.join(bindir, "render_floor")
    for exe in (tool, floor):
        if not os.access(exe, os.X_OK):
            sys.exit("missing %s (build with -DRKXML_BUILD_BENCHMARKS=ON)" % exe)
    common = ["render", "--locale", "de_DE", "--province", "BY", "--quiet", "--year", str(YEAR)]
    work = tempfile.mkdtemp(prefix="render-bench-")
    try:
        ours = best([tool] + common + ["-o", os.path.join(work, "year.pdf")])
        run([tool] + common + ["--format", "svg", "-o", os.path.join(work, "page.svg")])
        pages = sorted(os.path.join(work, f) for f in os.listdir(work) if f.startswith("page-"))
        base = best([floor, os.path.join(work, "floor.pdf"), A4_POINTS] + pages)
        print("year PDF (13 pages)       ours %.2f s wall %.2f s CPU   floor %.2f s wall %.2f s CPU   "
              "ratio %.2f wall %.2f CPU (target <= 1.5)"
              % (ours[0], ours[1], base[0], base[1], ours[0] / base[0], ours[1] / base[1]))

        if ensure(["pcal", "ps2pdf"], ["pcal", "ghostscript"]):
            script = "pcal 1 %d 12 > pcal.ps && ps2pdf pcal.ps pcal.pdf" % YEAR
            pcal = best(["sh", "-c", script], cwd=work)
            print("pcal + ps2pdf (12 months) %.2f s wall %.2f s CPU   ratio ours/pcal %.2f wall %.2f CPU"
                  % (pcal[0], pcal[1], ours[0] / pcal[0], ours[1] / pcal[1]))
        else:
            print("pcal + ps2pdf: not available")

        _, _, one = run([tool] + common + ["-o", os.path.join(work, "one.pdf")])
        _, _, ten = run([tool] + common + ["--years", "10", "-o", os.path.join(work, "ten.pdf")])
        print("peak RSS                  1 year %d MiB   10 years (130 pages) %d MiB   ratio %.2f (target <= 1.5)"
              % (one // 1024, ten // 1024, ten / one))
    finally:
        shutil.rmtree(work, ignore_errors=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
