"""Runs the benchmark programs of a folder and sets ours beside the peers.

A benchmark is named Work/who or Work/who/size. Benchmarks of one work and one
size stand in one row; `ours` is the first column. A benchmark that sets the
counter `bytes` is compared by memory as well, in a row of its own.
"""

import argparse
import json
import pathlib
import subprocess
import sys

REPETITIONS = 5


def run(program, pattern):
    """The results of one benchmark program, each the median of its repetitions."""
    command = [
        str(program),
        "--benchmark_format=json",
        f"--benchmark_repetitions={REPETITIONS}",
        "--benchmark_enable_random_interleaving=true",
        "--benchmark_min_time=0.05",
        "--benchmark_report_aggregates_only=true",
    ]
    if pattern:
        command.append(f"--benchmark_filter={pattern}")
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    if done.returncode != 0:
        sys.exit(f"bench: {program.name} failed:\n{done.stderr}")
    if not done.stdout.strip():
        return []
    results = json.loads(done.stdout)["benchmarks"]
    return [r for r in results if r.get("aggregate_name") == "median"]


def nanoseconds(result):
    return result["cpu_time"] * {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[result["time_unit"]]


def rows(results):
    """{(work, size): {who: figure}}, by name and size."""
    table = {}
    for result in results:
        work, slash, rest = result["run_name"].partition("/")
        if not slash:
            sys.exit(f"bench: {work} is not named Work/who")
        who, *size = rest.split("/")
        if who.isdigit():  # a work without peers
            who, size = "ours", [who]
        size = "/".join(part for part in size if part.isdigit())
        table.setdefault((work, size), {})[who] = nanoseconds(result)
        if "bytes" in result:
            table.setdefault((f"{work}, memory", size), {})[who] = result["bytes"]
    return dict(sorted(table.items(), key=lambda row: (row[0][0], int(row[0][1] or 0))))


def shown(work, figure):
    if work.endswith(", memory"):
        return f"{figure / 2**20:.1f} MiB"
    for unit, scale in (("s", 1e9), ("ms", 1e6), ("us", 1e3)):
        if figure >= scale:
            return f"{figure / scale:.3g} {unit}"
    return f"{figure:.3g} ns"


def print_table(title, table, ratios_only):
    peers = sorted({who for figures in table.values() for who in figures} - {"ours"})
    print(f"\n### {title}\n")
    print("| " + " | ".join(["work", "ours", *peers]) + " |")
    print("|---|---|" + "---|" * len(peers))
    for (work, size), figures in table.items():
        name = f"{work} ({int(size):,})" if size.isdigit() else work
        ours = figures.get("ours")
        cells = ["1" if ratios_only and ours is not None else shown(work, ours) if ours is not None else ""]
        for who in peers:
            if who not in figures:
                cells.append("")
                continue
            ratio = f"{figures[who] / ours:.2f}" if ours else ""
            cells.append(ratio if ratios_only else f"{shown(work, figures[who])} ({ratio})")
        print("| " + " | ".join([name, *cells]) + " |")


def print_growth(table):
    """For a work of ours measured at several sizes, the time by size."""
    sizes = {}
    for (work, size), figures in table.items():
        if size.isdigit() and "ours" in figures:
            sizes.setdefault(work, []).append((int(size), figures["ours"]))
    lines = []
    for work, points in sizes.items():
        points.sort()
        (small, first), (large, last) = points[0], points[-1]
        if large > small > 0:
            lines.append(f"- {work}: {large // small:,} times the size takes {last / first:,.1f} times as much")
    if lines:
        print("\nGrowth of ours:\n")
        print("\n".join(lines))


def main():
    options = argparse.ArgumentParser()
    options.add_argument("folder", type=pathlib.Path)
    options.add_argument("--ratios", action="store_true")
    options.add_argument("--filter", default="")
    options = options.parse_args()

    print("Figures behind a time are the peer's time divided by ours: above 1, we are faster.")
    for program in sorted(options.folder.glob("*_benchmarks")):
        print(f"bench: running {program.name}", file=sys.stderr)
        table = rows(run(program, options.filter))
        if table:
            print_table(program.name.removesuffix("_benchmarks"), table, options.ratios)
            print_growth(table)
            sys.stdout.flush()


if __name__ == "__main__":
    main()
