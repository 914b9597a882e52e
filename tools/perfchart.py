#!/usr/bin/env python3
"""Summarises repeated `zxbench --json` runs: a Markdown table of medians with
their spread (lowest and highest run) on stdout, and with --png a chart of
speed-up against OpenCV and of efficiency against the memory floor per kernel
(needs gnuplot with the png terminal, Debian gnuplot-nox).

    tools/perfchart.py [--png FILE] run1.json run2.json run3.json

Runs of `zxbench --live --json` give the live-path table instead: frames per
second of capacity on one and on N threads beside OpenCV's chain, charted as
frames per second per case.
"""
import json
import statistics
import subprocess
import sys
import tempfile


def main(argv):
    png = None
    if len(argv) > 1 and argv[0] == "--png":
        png, argv = argv[1], argv[2:]
    if not argv:
        print(__doc__, file=sys.stderr)
        return 2
    runs = [json.load(open(p)) for p in argv]
    if "live" in runs[0]:
        return live(runs, png)
    keys, rows = [], {}
    for run in runs:
        for c in run["cases"]:
            k = (c["name"], c["size"])
            if k not in rows:
                keys.append(k)
                rows[k] = []
            rows[k].append(c)

    def stat(cases, field):
        vals = [c[field] for c in cases if c[field] is not None]
        return (statistics.median(vals), min(vals), max(vals)) if vals else None

    def fmt(s, digits):
        return "-" if s is None else f"{s[0]:.{digits}f} ({s[1]:.{digits}f}–{s[2]:.{digits}f})"

    print(f"Median of {len(runs)} runs (lowest–highest run in brackets); each run's time is itself the "
          f"median of {runs[0]['runs']} calls.\n")
    print("| case | size | ours ms | OpenCV ms | speed-up | floor | floor GB/s | efficiency |")
    print("|---|---|---|---|---|---|---|---|")
    for k in keys:
        cs = rows[k]
        print(f"| {k[0]} | {k[1]} | {fmt(stat(cs, 'ours_ms'), 3)} | {fmt(stat(cs, 'opencv_ms'), 3)} | "
              f"{fmt(stat(cs, 'speedup'), 2)} | {cs[0]['floor']} | {fmt(stat(cs, 'floor_gbs'), 1)} | "
              f"{fmt(stat(cs, 'efficiency'), 2)} |")
    if not png:
        return 0

    sizes = []
    for k in keys:
        if k[1] not in sizes:
            sizes.append(k[1])
    names = []
    for k in keys:
        if k[0] not in names:
            names.append(k[0])
    with tempfile.TemporaryDirectory() as tmp:
        files = {}
        for field in ("speedup", "efficiency"):
            path = f"{tmp}/{field}.dat"
            with open(path, "w") as f:
                for n in names:
                    if field == "speedup" and all(stat(rows.get((n, s), []), field) is None for s in sizes):
                        continue
                    cols = []
                    for s in sizes:
                        st = stat(rows.get((n, s), []), field) if (n, s) in rows else None
                        cols += list(st) if st else [0, 0, 0]
                    f.write('"%s" %s\n' % (n, " ".join(f"{v:.4f}" for v in cols)))
            files[field] = path
        plots = {}
        for field in files:
            parts = []
            for i, s in enumerate(sizes):
                c = 2 + 3 * i
                xt = ":xtic(1)" if i == 0 else ""
                parts.append(f"'{files[field]}' using {c}:{c + 1}:{c + 2}{xt} title '{s}'")
            plots[field] = ", ".join(parts)
        script = f"""
set terminal png size 1400,1000 font ',10'
set output '{png}'
set multiplot layout 2,1
set style data histograms
set style histogram errorbars gap 1 lw 1
set style fill solid 0.6 border -1
set xtics rotate by -35 scale 0
set grid ytics
set key top right
set bmargin 12
set rmargin 18
set title 'speed-up against OpenCV, one thread (median, bars: lowest and highest run)'
set ylabel 'OpenCV time / our time'
set yrange [0:*]
plot {plots['speedup']}, 1 notitle lc rgb 'black' dt 2
set title 'efficiency against the memory floor (memcpy or streaming sum of the same bytes)'
set ylabel 'floor time / our time'
plot {plots['efficiency']}, 1 notitle lc rgb 'black' dt 2
unset multiplot
"""
        subprocess.run(["gnuplot"], input=script, text=True, check=True)
    return 0


def live(runs, png):
    names, rows = [], {}
    for run in runs:
        for c in run["live"]:
            if c["name"] not in rows:
                names.append(c["name"])
                rows[c["name"]] = []
            rows[c["name"]].append(c)

    def stat(cases, fn):
        vals = [fn(c) for c in cases]
        return statistics.median(vals), min(vals), max(vals)

    def fmt(s, digits):
        return f"{s[0]:.{digits}f} ({s[1]:.{digits}f}–{s[2]:.{digits}f})"

    n = runs[0]["threads"]
    print(f"Median of {len(runs)} runs (lowest–highest run in brackets); each run's figure is the fastest of "
          f"{runs[0]['runs']} frames. CPU: time of the one thread; wall: elapsed, N = {n} threads.\n")
    print(f"| case | ours 1T CPU ms | OpenCV 1T CPU ms | speed-up 1T | ours 1T wall ms | ours {n}T wall ms | "
          f"{n}T / 1T | frames/s {n}T | OpenCV {n}T wall ms | work {n}T / 1T |")
    print("|---|---|---|---|---|---|---|---|---|---|")
    for k in names:
        cs = rows[k]
        print(f"| {k} | {fmt(stat(cs, lambda c: c['ours1_cpu_ms']), 2)} | {fmt(stat(cs, lambda c: c['opencv1_cpu_ms']), 2)} | "
              f"{fmt(stat(cs, lambda c: c['opencv1_cpu_ms'] / c['ours1_cpu_ms']), 2)} | "
              f"{fmt(stat(cs, lambda c: c['ours1_ms']), 2)} | {fmt(stat(cs, lambda c: c['oursN_ms']), 2)} | "
              f"{fmt(stat(cs, lambda c: c['ours1_ms'] / c['oursN_ms']), 2)} | "
              f"{fmt(stat(cs, lambda c: 1e3 / c['oursN_ms']), 1)} | {fmt(stat(cs, lambda c: c['opencvN_ms']), 2)} | "
              f"{fmt(stat(cs, lambda c: c['oursN_process_ms'] / c['ours1_cpu_ms']), 2)} |")
    if not png:
        return 0
    series = [("ours, 1 thread (CPU)", lambda c: 1e3 / c["ours1_cpu_ms"]),
              ("OpenCV, 1 thread (CPU)", lambda c: 1e3 / c["opencv1_cpu_ms"]),
              (f"ours, {n} threads (wall)", lambda c: 1e3 / c["oursN_ms"]),
              (f"OpenCV, {n} threads (wall)", lambda c: 1e3 / c["opencvN_ms"])]
    with tempfile.TemporaryDirectory() as tmp:
        path = f"{tmp}/live.dat"
        with open(path, "w") as f:
            for k in names:
                cols = []
                for _, fn in series:
                    cols += list(stat(rows[k], fn))
                f.write('"%s" %s\n' % (k.replace("live ", ""), " ".join(f"{v:.4f}" for v in cols)))
        parts = []
        for i, (title, _) in enumerate(series):
            c = 2 + 3 * i
            parts.append(f"'{path}' using {c}:{c + 1}:{c + 2}{':xtic(1)' if i == 0 else ''} title '{title}'")
        script = f"""
set terminal png size 1400,700 font ',10'
set output '{png}'
set style data histograms
set style histogram errorbars gap 1 lw 1
set style fill solid 0.6 border -1
set xtics rotate by -35 scale 0
set grid ytics
set key top right
set bmargin 10
set logscale y
set title 'live path: frames per second of capacity (median, bars: lowest and highest run)'
set ylabel 'frames / s'
plot {", ".join(parts)}, 30 title '30 frames/s' lc rgb 'black' dt 2
"""
        subprocess.run(["gnuplot"], input=script, text=True, check=True)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
