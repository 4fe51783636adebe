"""The tables, as Markdown that also reads well as plain text."""

from collections import Counter

from .check import READ
from .matching import KEPT, LOST, UNDERSTOOD

_COUNTS = ("elements", "understood", "kept", "lost", "held %", "attributes lost", "facts true", "facts", "same bytes",
           "equal")


class Sum:
    """The numbers of several files."""

    def __init__(self, results):
        self.files = len(results)
        self.read = sum(1 for result in results if result.outcome == READ)
        self.states = sum((result.states for result in results), Counter())
        self.elements = sum(self.states.values())
        self.attributes_lost = sum(result.attributes_lost for result in results)
        self.facts = sum(result.facts for result in results)
        self.facts_true = sum(result.facts_true for result in results)
        self.stable = sum(1 for result in results if result.is_stable)
        self.equal = sum(1 for result in results if result.is_equal)

    def held(self):
        """The part of the elements that is in the copies, in percent."""
        return percent(self.elements - self.states[LOST], self.elements)

    def true(self):
        """The part of the facts that is true, in percent."""
        return percent(self.facts_true, self.facts)


def percent(part, whole):
    """100 of nothing."""
    return 100.0 if whole == 0 else 100.0 * part / whole


def by_family(results):
    """The results in lists by family, in the order of their names."""
    families = {}
    for result in sorted(results, key=lambda result: (result.family, result.name)):
        families.setdefault(result.family, []).append(result)
    return families


def file_table(results):
    """One row for each file."""
    rows = [("file", "family", "outcome") + _COUNTS + ("s",)]
    for result in results:
        one = Sum([result])
        rows.append((result.name, result.family, result.outcome) + _counts(one)[:-2] +
                    (_yes(result.is_stable), _yes(result.is_equal), f"{result.seconds:.1f}"))
    return _table(rows)


def family_table(results):
    """One row for each family, and one for all."""
    rows = [("family", "files", "read") + _COUNTS]
    for family, members in by_family(results).items():
        rows.append(_family_row(family, members))
    rows.append(_family_row("all", results))
    return _table(rows)


def shape_tables(results, most):
    """What is lost most often, and which facts are most often false, by family."""
    text = ""
    for family, members in by_family(results).items():
        for title, name in (("lost", "losses"), ("false", "falsehoods")):
            counts = sum((getattr(result, name) for result in members), Counter())
            if counts:
                text += f"\n{family}, {title}:\n" + \
                    "".join(f"{count:8} {shape}\n" for shape, count in counts.most_common(most))
    return text


def remarks(results):
    """What zel said of the files that it did not read."""
    return "".join(f"{result.name}: {result.remark}\n" for result in results if result.remark)


def _family_row(family, members):
    one = Sum(members)
    return (family, str(one.files), str(one.read)) + _counts(one)


def _counts(one):
    return (str(one.elements), str(one.states[UNDERSTOOD]), str(one.states[KEPT]), str(one.states[LOST]),
            f"{one.held():.1f}", str(one.attributes_lost), str(one.facts_true), str(one.facts), str(one.stable),
            str(one.equal))


def _yes(answer):
    return "-" if answer is None else "yes" if answer else "NO"


def _table(rows):
    widths = [max(len(row[column]) for row in rows) for column in range(len(rows[0]))]
    rows = [rows[0], tuple("-" * width for width in widths)] + rows[1:]
    lines = ("| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)) + " |" for row in rows)
    return "\n".join(lines) + "\n"
