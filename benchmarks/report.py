#!/usr/bin/env python3
"""Turns what oru_benchmark measured into tables and a chart.

usage: report.py ratios JOBS.json RATIOS.json   medians of the jobs beside the ceilings, and the same as JSON
       report.py growth GROWTH.json             cost of a clip by the number of clips
       report.py connections CONNECTIONS.json   cost of a clip by the options of the connection
       report.py repository REPOSITORY.json     puts beside saves, and pages beside SQL by hand
       report.py waits WAITS.json               what a user waits for, in milliseconds, beside the ceilings
       report.py threads PLAIN.json TUNED.json  deep reads by 1, 2 and 4 threads, without TuneForThreads and with it
       report.py instructions COUNTS.txt        lines of JOB SIDE FEW-INSTRUCTIONS MANY-INSTRUCTIONS CLIPS-BETWEEN
       report.py chart GROWTH.json CHART.svg    the growth as a picture
"""
import json
import math
import statistics
import sys

# What a job may cost as a multiple of hand-written code. The others are shown without one.
CEILINGS = {
    "save_new": 1.1,
    "save_again": 1.08,
    "find_key": 1.6,
    "get_object": 1.3,
    "read_deep": 1.12,
    "read_lazy": 1.3,
    "walk_row": 1.05,
    "match": 1.1,
    "match_raw": 1.1,
    "delete_one": 1.05,
}
OTHER_JOBS = ["save_having_deleted", "search", "save_group", "read_group", "save_sequence", "read_sequence"]
# The same by instructions.
INSTRUCTION_CEILINGS = {
    "save": 1.08,
    "resave": 1.08,
    "deep": 1.12,
    "match": 1.1,
    "match_raw": 1.1,
    "walk": 1.05,
    "walk_plain": 1.05,
}


def load(path):
    with open(path, encoding="utf-8") as file:
        return json.load(file)


def verdict(ratio, ceiling):
    """The ceiling beside a ratio, and whether the ratio is within it; nothing without a ceiling."""
    return f"{ceiling:>9.2f}  {'PASS' if ratio <= ceiling else 'OVER'}" if ceiling else ""


def ratios(path, result_path):
    times = {}
    for run in load(path)["benchmarks"]:
        if run.get("run_type") != "aggregate":
            job, side = run["run_name"].split("/")[:2]
            times.setdefault(job, {}).setdefault(side, []).append(run["real_time"])
    print(f"{'job':<21}{'library us':>12}{'by hand us':>12}{'ratio':>8}{'ceiling':>9}")
    rows = []
    for job in [*CEILINGS, *OTHER_JOBS]:
        if job not in times:
            continue
        library = statistics.median(times[job]["library"])
        rival = statistics.median(times[job]["rival"])
        ratio, ceiling = library / rival, CEILINGS.get(job)
        print(f"{job:<21}{library:>12.2f}{rival:>12.2f}{ratio:>8.2f}{verdict(ratio, ceiling)}")
        rows.append({"job": job, "library": library, "rival": rival, "ratio": ratio, "ceiling": ceiling})
    with open(result_path, "w", encoding="utf-8") as file:
        json.dump(rows, file, indent=2)


def growth(path):
    print(f"{'clips':>9} {'by':<9}{'look-up indexes':<16}{'find us':>10}{'save us':>10}{'read deep us':>14}"
          f"{'pages of it':>13}")
    for row in load(path):
        indexes = "with" if row["indexes"] else "without"
        side = "library" if row["side"] == "library" else "hand"
        print(f"{row['clips']:>9} {side:<9}{indexes:<16}{row['find']:>10.1f}{row['save']:>10.1f}{row['read_deep']:>14.1f}"
              f"{row['pages_of_deep']:>13.1f}")


def connections(path):
    # A save without a transaction, in one of its own, as one of a hundred in one.
    print(f"{'journal':<9}{'synchronous':<13}{'bare save us':>13}{'save alone us':>15}{'save in 100 us':>16}"
          f"{'deep us':>10}{'deep guarded us':>17}")
    for row in load(path):
        print(f"{row['journal']:<9}{row['synchronous']:<13}{row['save_bare']:>13.0f}{row['save_alone']:>15.0f}{row['save_in_100']:>16.0f}"
              f"{row['deep_unguarded']:>10.0f}{row['deep_guarded']:>17.0f}")


def repository(path):
    # A page that is fast enough by itself needs no comparison.
    print(f"{'job':<30}{'repository us':>14}{'by hand us':>12}{'ratio':>8}{'ceiling':>9}")
    for row in load(path):
        ratio = row["library"] / row["rival"]
        is_fast = row["library"] <= row["most"]
        words = f"{row['most'] / 1000:>6.0f} ms  PASS" if is_fast else verdict(ratio, row["ceiling"])
        print(f"{row['job']:<30}{row['library']:>14.0f}{row['rival']:>12.0f}{ratio:>8.2f}{words}")


def waits(path):
    print(f"{'job':<45}{'ms':>9}{'ceiling':>9}")
    for row in load(path):
        print(f"{row['job']:<45}{row['ms']:>9.3f}{verdict(row['ms'], row['ceiling'])}")


def threads(plain_path, tuned_path):
    # What the threads take together of the time of one.
    plain, tuned = ({row["threads"]: row["ms"] for row in load(path)} for path in (plain_path, tuned_path))
    print(f"{'threads':<9}{'plain ms':>10}{'tuned ms':>10}{'tuned / one thread':>20}")
    for count, milliseconds in tuned.items():
        share = milliseconds / tuned[1]
        print(f"{count:<9}{plain[count]:>10.0f}{milliseconds:>10.0f}{share:>20.2f}{verdict(share, 0.6 if count == 2 else 0)}")


def instructions(path):
    costs = {}
    with open(path, encoding="utf-8") as file:
        for line in file:
            job, side, few, many, between = line.split()
            costs.setdefault(job, {})[side] = (int(many) - int(few)) / int(between)
    print(f"{'job':<10}{'library':>12}{'by hand':>12}{'ratio':>8}{'ceiling':>9}   (instructions each)")
    for job, sides in costs.items():
        ratio = sides["library"] / sides["rival"]
        ceiling = INSTRUCTION_CEILINGS.get(job)
        print(f"{job:<10}{sides['library']:>12.0f}{sides['rival']:>12.0f}{ratio:>8.2f}{verdict(ratio, ceiling)}")


WIDTH, HEIGHT, LEFT, TOP, RIGHT, BOTTOM = 760, 480, 80, 70, 190, 60
SERIES = [("find", "find a key", "#1b7f4b"), ("save", "save new", "#b3541e"), ("read_deep", "read deep", "#2457a6")]


def chart(path, svg_path):
    rows = [row for row in load(path) if row["side"] == "library"]
    clips = [row["clips"] for row in rows]
    costs = [row[key] for row in rows for key, _, _ in SERIES]
    powers_x = range(math.floor(math.log10(min(clips))), math.ceil(math.log10(max(clips))) + 1)
    powers_y = range(math.floor(math.log10(min(costs))), math.ceil(math.log10(max(costs))) + 1)

    def x(value):
        share = (math.log10(value) - powers_x[0]) / max(1, powers_x[-1] - powers_x[0])
        return LEFT + share * (WIDTH - LEFT - RIGHT)

    def y(value):
        share = (math.log10(value) - powers_y[0]) / max(1, powers_y[-1] - powers_y[0])
        return HEIGHT - BOTTOM - share * (HEIGHT - TOP - BOTTOM)

    def text(at_x, at_y, words, anchor="middle", more=""):
        return f'<text x="{at_x:.1f}" y="{at_y:.1f}" text-anchor="{anchor}" {more}>{words}</text>'

    parts = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" font-family="sans-serif" '
        'font-size="13">',
        f'<rect width="{WIDTH}" height="{HEIGHT}" fill="white"/>',
        text(LEFT, 28, "Cost of a clip by the number of clips on the file", "start", 'font-size="16"'),
        text((LEFT + WIDTH - RIGHT) / 2, HEIGHT - 16, "clips on the file (logarithmic)"),
        text(8, 50, "microseconds a clip (logarithmic)", "start"),
    ]
    for power in powers_x:
        at = x(10**power)
        parts.append(f'<line x1="{at:.1f}" y1="{TOP}" x2="{at:.1f}" y2="{HEIGHT - BOTTOM}" stroke="#ddd"/>')
        parts.append(text(at, HEIGHT - BOTTOM + 20, f"{10**power:,}"))
    for power in powers_y:
        at = y(10**power)
        parts.append(f'<line x1="{LEFT}" y1="{at:.1f}" x2="{WIDTH - RIGHT}" y2="{at:.1f}" stroke="#ddd"/>')
        parts.append(text(LEFT - 8, at + 4, f"{10**power:,}", "end"))
    legend = TOP + 10
    for key, label, color in SERIES:
        for has_indexes in (True, False):
            points = [(x(row["clips"]), y(row[key])) for row in rows if row["indexes"] == has_indexes]
            if not points:
                continue
            dashes = "" if has_indexes else ' stroke-dasharray="6 4"'
            line = " ".join(f"{at_x:.1f},{at_y:.1f}" for at_x, at_y in points)
            parts.append(f'<polyline points="{line}" fill="none" stroke="{color}" stroke-width="2"{dashes}/>')
            parts += [f'<circle cx="{at_x:.1f}" cy="{at_y:.1f}" r="3" fill="{color}"/>' for at_x, at_y in points]
            start = WIDTH - RIGHT + 16
            parts.append(f'<line x1="{start}" y1="{legend}" x2="{start + 28}" y2="{legend}" stroke="{color}" '
                         f'stroke-width="2"{dashes}/>')
            words = label if has_indexes else label + ", no indexes"
            parts.append(text(start + 34, legend + 4, words, "start", 'font-size="12"'))
            legend += 22
    parts.append("</svg>\n")
    with open(svg_path, "w", encoding="utf-8") as file:
        file.write("\n".join(parts))


COMMANDS = {"ratios": ratios, "growth": growth, "connections": connections, "repository": repository,
            "instructions": instructions, "waits": waits, "threads": threads, "chart": chart}

if __name__ == "__main__":
    if len(sys.argv) < 3 or sys.argv[1] not in COMMANDS:
        sys.exit(__doc__)
    COMMANDS[sys.argv[1]](*sys.argv[2:])
