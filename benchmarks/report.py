#!/usr/bin/env python3
"""Turns what oru_benchmark measured into tables and a chart.

usage: report.py ratios JOBS.json               medians of the jobs beside the ceilings
       report.py growth GROWTH.json             cost of a clip by the number of clips
       report.py connections CONNECTIONS.json   cost of a clip by the options of the connection
       report.py repository REPOSITORY.json     puts beside saves, and pages beside SQL by hand
       report.py waits WAITS.json               what a user waits for, in milliseconds, beside the ceilings
       report.py threads PLAIN.json TUNED.json  deep reads by 1, 2 and 4 threads, without TuneForThreads and with it
       report.py instructions COUNTS.txt        lines of JOB SIDE FEW-INSTRUCTIONS MANY-INSTRUCTIONS CLIPS-BETWEEN
       report.py chart GROWTH.json CHART.svg    the growth as a picture
       report.py over PAGE.md                   the jobs of the page's tables that are over their ceilings
With --into PAGE.md at its end, a command also puts its table in place of the page's table after the line
"<!-- measured: COMMAND -->"; `over` does so with its sentence.
"""
import json
import math
import re
import statistics
import sys

# The name of each job, and what it may cost as a multiple of hand-written code; None for those that are shown only.
JOBS = {
    "save_new": ("save new", 1.1),
    "save_again": ("save again", 1.08),
    "find_key": ("find a key by identifier", 1.6),
    "get_object": ("`GetObject` of one asset", 1.3),
    "read_deep": ("read deep", 1.12),
    "read_lazy": ("read lazy", 1.3),
    "walk_row": ("walk all assets, a row", 1.05),
    "match": ("full-text search", 1.1),
    "match_raw": ("raw full-text search", 1.1),
    "delete_one": ("delete one, with clean-up", 1.05),
    "save_having_deleted": ("save new, after a deletion", None),
    "search": ("search by name", None),
    "save_group": ("save a group", None),
    "read_group": ("read a group", None),
    "save_sequence": ("save a sequence", None),
    "read_sequence": ("read a sequence", None),
}
# The same by instructions.
COUNTED = {
    "save": ("save new", 1.08),
    "resave": ("save again", 1.08),
    "deep": ("read deep", 1.12),
    "match": ("full-text search", 1.1),
    "match_raw": ("raw full-text search", 1.1),
    "walk": ("walk all assets", 1.05),
    "walk_plain": ("walk all assets, by hand without the full-text index", 1.05),
}


def load(path):
    with open(path, encoding="utf-8") as file:
        return json.load(file)


def verdict(value, ceiling):
    """The last two cells of a row: the ceiling, and whether the value is within it. Empty without a ceiling."""
    return [f"{ceiling:.2f}", "PASS" if value <= ceiling else "OVER"] if ceiling else ["", ""]


def compared(name, library, rival, ceiling):
    """A row of a job by both sides."""
    digits = 0 if min(library, rival) >= 1000 else 1 if min(library, rival) >= 10 else 2
    ratio = library / rival
    return [name, f"{library:,.{digits}f}", f"{rival:,.{digits}f}", f"{ratio:.2f}", *verdict(ratio, ceiling)]


def ratios(path):
    times = {}
    for run in load(path)["benchmarks"]:
        if run.get("run_type") != "aggregate":
            job, side = run["run_name"].split("/")[:2]
            times.setdefault(job, {}).setdefault(side, []).append(run["real_time"])
    yield ["Job", "library, µs", "by hand, µs", "ratio", "ceiling", ""]
    for job, (name, ceiling) in JOBS.items():
        if job in times:
            yield compared(name, *(statistics.median(times[job][side]) for side in ("library", "rival")), ceiling)


def growth(path):
    yield ["Clips on the file", "look-up indexes", "by", "find a key, µs", "save new, µs", "read deep, µs",
           "pages of a deep read"]
    for row in load(path):
        yield [f"{row['clips']:,}", "with" if row["indexes"] else "without",
               "library" if row["side"] == "library" else "hand", f"{row['find']:.1f}", f"{row['save']:,.0f}",
               f"{row['read_deep']:,.0f}", f"{row['pages_of_deep']:,.1f}"]


def connections(path):
    yield ["Journal", "`_synchronous`", "save without a transaction, µs", "one transaction a clip, µs",
           "a hundred clips in one, µs", "read deep, µs", "in a `ReadGuard`, µs"]
    for row in load(path):
        costs = ("save_bare", "save_alone", "save_in_100", "deep_unguarded", "deep_guarded")
        yield [f"`{row['journal']}`", f"`{row['synchronous']}`", *(f"{row[cost]:,.0f}" for cost in costs)]


def repository(path):
    yield ["Job of the repository", "library, µs", "other, µs", "ratio", "ceiling", ""]
    for row in load(path):
        cells = compared(row["job"], row["library"], row["rival"], row["ceiling"])
        # A page that is fast enough by itself needs no comparison.
        if row["library"] <= row["most"]:
            cells[-2:] = [f"{row['most'] / 1000:.0f} ms", "PASS"]
        yield cells


def waits(path):
    yield ["Wait", "ms", "ceiling, ms", ""]
    for row in load(path):
        yield [row["job"], f"{row['ms']:.3f}", *verdict(row["ms"], row["ceiling"])]


def threads(plain_path, tuned_path):
    # What the threads take together of the time of one.
    plain, tuned = ({row["threads"]: row["ms"] for row in load(path)} for path in (plain_path, tuned_path))
    yield ["Threads", "without, ms", "after `TuneForThreads`, ms", "of one thread's time", "ceiling", ""]
    for count, milliseconds in tuned.items():
        share = milliseconds / tuned[1]
        yield [f"{count} thread{'s' if count > 1 else ''}", f"{plain[count]:.0f}", f"{milliseconds:.0f}", f"{share:.2f}",
               *verdict(share, 0.6 if count == 2 else None)]


def instructions(path):
    costs = {}
    with open(path, encoding="utf-8") as file:
        for line in file:
            job, side, few, many, between = line.split()
            costs.setdefault(job, {})[side] = (int(many) - int(few)) / int(between)
    yield ["Job", "library", "by hand", "ratio", "ceiling", ""]
    for job, sides in costs.items():
        name, ceiling = COUNTED[job]
        yield compared(name, sides["library"], sides["rival"], ceiling)


def print_table(rows):
    widths = [max(len(row[column]) for row in rows) for column in range(len(rows[0]))]
    for row in rows:
        cells = [cell.ljust(width) if column == 0 else cell.rjust(width)
                 for column, (cell, width) in enumerate(zip(row, widths))]
        print("  ".join(cells).rstrip())


def markdown(rows):
    lines = [rows[0], ["---", *("---:" for _ in rows[0][1:])], *rows[1:]]
    return "".join("| " + " | ".join(line) + " |\n" for line in lines)


def put_into(page, name, text):
    """Puts a text in place of the paragraph or table after its line on the page."""
    with open(page, encoding="utf-8") as file:
        before = file.read()
    place = re.compile(rf"(<!-- measured: {name} -->\n)(?:[^\n]+\n)*")
    if not place.search(before):
        sys.exit(f"report.py: {page} has no place for {name}")
    with open(page, "w", encoding="utf-8") as file:
        file.write(place.sub(lambda found: found[1] + text, before))


def over(page):
    with open(page, encoding="utf-8") as file:
        lines = file.read().splitlines()
    jobs = []
    for cells in ([cell.strip() for cell in line.strip("|").split("|")] for line in lines if line.startswith("| ")):
        if cells[-1] == "OVER":
            jobs.append(f"{cells[0]} ({cells[-3]}, ceiling {cells[-2]})")
    return "Over their ceilings: " + "; ".join(jobs) + ".\n" if jobs else "No job is over its ceiling.\n"


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


TABLES = {"ratios": ratios, "growth": growth, "connections": connections, "repository": repository,
          "instructions": instructions, "waits": waits, "threads": threads}


def main(command, *arguments):
    page = arguments[-1] if arguments[-2:-1] == ("--into",) else None
    if page:
        arguments = arguments[:-2]
    if command == "chart":
        chart(*arguments)
    elif command == "over":
        print(over(*arguments), end="")
        if page:
            put_into(page, command, over(*arguments))
    else:
        rows = list(TABLES[command](*arguments))
        print_table(rows)
        if page:
            put_into(page, command, markdown(rows))


if __name__ == "__main__":
    if len(sys.argv) < 3 or sys.argv[1] not in {*TABLES, "chart", "over"}:
        sys.exit(__doc__)
    main(*sys.argv[1:])
