"""Runs zel over one file, and counts what becomes of it."""

import os
import shutil
import subprocess
import time
from collections import Counter

from . import dump
from .facts import Facts
from .family import family_of
from .matching import KEPT, LOST, UNDERSTOOD, Matching
from .xmltree import NotCountable, parse

READ, REFUSED, CRASHED, TIMED_OUT = "read", "refused", "crashed", "timed out"


class Zel:
    """The program, run with a limit of time. Outputs beyond what a terminal shows are not an error of it."""

    def __init__(self, program, timeout, options):
        self._program = program
        self._timeout = timeout
        self._options = options

    def run(self, *arguments):
        """What became of the run: exit code (None after the limit), output and errors."""
        try:
            done = subprocess.run([self._program, *arguments], stdin=subprocess.DEVNULL, capture_output=True,
                                  timeout=self._timeout, check=False)
        except subprocess.TimeoutExpired:
            return None, "", f"no end within {self._timeout} s"
        return done.returncode, done.stdout.decode("utf-8", "replace"), done.stderr.decode("utf-8", "replace")

    def read(self, command, *arguments):
        """Runs a command that reads files, with the options for all of those."""
        return self.run(command, *self._options, *arguments)

    def ask(self, *arguments):
        """The output of a command that must not fail."""
        code, out, error = self.run(*arguments)
        if code != 0:
            raise RuntimeError(f"{self._program} {' '.join(arguments)}: {error.strip()}")
        return out


class Result:
    """What became of a file."""

    def __init__(self, name):
        self.name = name
        self.family = "no model"
        self.outcome = READ
        self.remark = ""
        self.seconds = 0.0
        self.states = Counter()
        self.attributes = self.attributes_lost = 0
        self.facts = self.facts_true = 0
        self.is_stable = self.is_equal = None
        self.losses = Counter()
        self.falsehoods = Counter()

    @property
    def elements(self):
        """How many elements the file has, apart from the envelope."""
        return sum(self.states.values())

    def is_harmful(self):
        """Whether zel did something to the file that it must not do to any."""
        return self.outcome in (CRASHED, TIMED_OUT) or (self.outcome == REFUSED and "\n" in self.remark)

    def is_well(self):
        """Whether nothing was lost and every copy is the same."""
        return not self.is_harmful() and self.states[LOST] == 0 and self.attributes_lost == 0 and \
            self.facts == self.facts_true and self.is_stable is not False and self.is_equal is not False


def check_file(zel, metamodels, path, name, folder):
    """Converts the file into the folder, which is emptied before, and returns the `Result`."""
    result = Result(name)
    try:
        original = parse(path)
    except NotCountable as reason:
        original = None
        result.family = f"no model ({reason})"
    if original is not None and (original.is_model() or original.is_xmi_1()):
        result.family = family_of(original)
    started = time.monotonic()
    copy = os.path.join(folder, os.path.basename(path))
    code, _, error = zel.read("convert", path, copy)
    result.seconds = time.monotonic() - started
    if code == 0:
        _examine(zel, metamodels, path, copy, original, result)
    else:
        result.outcome = TIMED_OUT if code is None else REFUSED if code > 0 else CRASHED
        result.remark = error.strip()
        if original is not None and original.is_model():
            result.states[LOST] = sum(1 for _ in original.elements())
            result.losses[f"the whole file: {result.outcome}"] = result.states[LOST]
    return result


def _examine(zel, metamodels, path, copy, original, result):
    """Looks at the copy of a file that was read."""
    if original is not None:
        converted = parse(copy)
        matching = Matching(original, converted, metamodels)
        _count(original, matching, result)
        _count_facts(zel, metamodels, matching, copy, result)
    first = copy + ".first"
    shutil.copyfile(copy, first)
    result.is_equal = zel.read("compare", path, copy)[0] == 0
    result.is_stable = zel.read("convert", copy, copy)[0] == 0 and _same_bytes(first, copy)


def _count(original, matching, result):
    for node in original.elements():
        if node.is_envelope():
            continue
        state = matching.state(node)
        result.states[state] += 1
        if state == LOST:
            result.losses[_shape(node)] += 1


def _count_facts(zel, metamodels, matching, copy, result):
    code, text, _ = zel.read("dump", copy)
    dumped = {}
    if code == 0:
        dumped = dump.values_by_element(dump.parse_dump(text), matching.converted,
                                        lambda element: matching.class_of(element) is not None)
    facts = Facts(matching, metamodels, dumped)
    result.attributes, lost = facts.lost_attributes()
    result.attributes_lost = len(lost)
    for node, name in lost:
        result.losses[f"{node.type or node.name}.{name}"] += 1
    for fact in facts.all():
        result.facts += 1
        result.facts_true += fact.is_true
        if not fact.is_true:
            result.falsehoods[f"{fact.node.type or fact.node.name}.{fact.what}"] += 1


def _shape(node):
    """The element by the kinds of itself and its parent, for counting."""
    parent = node.parent
    above = "" if parent is None or parent.is_envelope() else (parent.type or parent.name) + "/"
    kind = " " + node.type if node.type else " (link)" if node.is_link() else ""
    return above + node.name + kind


def _same_bytes(one, other):
    with open(one, "rb") as first, open(other, "rb") as second:
        return first.read() == second.read()


__all__ = ["Zel", "Result", "check_file", "KEPT", "LOST", "UNDERSTOOD"]
