"""Checks the schemas that tolvmsg writes with an independent validator.

The environment names the folder of the golden messages (GOLDEN).
"""

import copy
import json
import os
import pathlib
import tempfile
import unittest

from jsonschema import Draft202012Validator

from tool import attribute, classes, encoded, message, run

SCHEMAS = {}
GOLDEN = {}


def setUpModule():
    with tempfile.TemporaryDirectory() as folder:
        assert run("schema", "--all", "-o", folder).status == 0
        for path in pathlib.Path(folder).iterdir():
            SCHEMAS[path.name.removesuffix(".schema.json")] = json.loads(path.read_text())
    golden = pathlib.Path(os.environ["GOLDEN"])
    for path in golden.rglob("*.json"):
        name = ".".join(path.relative_to(golden).with_suffix("").parts)
        GOLDEN[name] = json.loads(path.read_text())


def accepts(name, tree):
    return Draft202012Validator(SCHEMAS[name]).is_valid(tree)


def example(name):
    return json.loads(run("example", name.replace(".", "::")).out)


def paths(tree, at=()):
    """The paths of all values in a tree; identical entries of a list count once."""
    inside = tree.items() if isinstance(tree, dict) else enumerate(tree[:2])
    for key, value in inside:
        yield at + (key,)
        if isinstance(value, (dict, list)):
            yield from paths(value, at + (key,))


def changed(tree, path, change):
    tree = copy.deepcopy(tree)
    inner = tree
    for key in path[:-1]:
        inner = inner[key]
    change(inner, path[-1])
    return tree


def replace(by):
    def change(inner, key):
        inner[key] = by
    return change


def value_at(tree, path):
    for key in path:
        tree = tree[key]
    return tree


class Schema(unittest.TestCase):
    def test_all_messages_are_accepted(self):
        names = {row["alias"].replace("::", ".") for row in classes()}
        self.assertEqual(names, set(SCHEMAS))
        self.assertEqual(names, set(GOLDEN))
        for name, schema in SCHEMAS.items():
            Draft202012Validator.check_schema(schema)
            for tree in (GOLDEN[name], example(name)):
                faults = [f"{fault.json_path}: {fault.message}"
                          for fault in Draft202012Validator(schema).iter_errors(tree)]
                self.assertEqual([], faults, name)

    def test_faults_anywhere_are_refused(self):
        counts = {"kind": 0, "unknown": 0, "absent": 0}
        for name, tree in GOLDEN.items():
            for path in paths(tree):
                value = value_at(tree, path)
                wrong = 7 if isinstance(value, dict) else {"Unheard": 0}
                mutants = {"kind": changed(tree, path, replace(wrong))}
                if isinstance(value, dict):
                    mutants["unknown"] = changed(tree, path + ("Unheard",), replace(1))
                for kind, mutant in mutants.items():
                    counts[kind] += 1
                    self.assertFalse(accepts(name, mutant), (name, kind, path))
            # A new message has all required keys; of the others, only these addresses.
            for path in paths(example(name)):
                if isinstance(path[-1], str) and "MsgKey" not in path[:-1]:
                    counts["absent"] += 1
                    mutant = changed(tree, path, lambda inner, key: inner.pop(key, None))
                    self.assertFalse(accepts(name, mutant), (name, path))
            self.assertFalse(accepts(name, {**tree, "Unheard": 1}), name)
        self.assertTrue(all(count > 100 for count in counts.values()), counts)

    def test_edges(self):
        connect, trace, destination = "App.ConnectMessage", "Attrs.DoubleTraceMessage", ["x"]
        samples = ("Data", "trace")
        table = (
            # of a golden message, at, put there, accepted
            (connect, ("Data", "MaxVersion"), 2147483647, True),
            (connect, ("Data", "MaxVersion"), 2147483648, False),
            (connect, ("Data", "MinVersion"), -2147483649, False),
            (connect, ("Data", "MinVersion"), 1.5, False),
            (connect, ("Data", "BinaryTransmission"), 1, False),
            (connect, ("MessageID",), 844424930131970, False),  # that of another class
            (connect, ("Sender",), "client", False),
            (connect, ("Sender",), [], True),
            ("App.PingAnswerMessage", ("Data", "MaxVersion"), -1, False),  # unsigned
            ("Attrs.PcieDeviceMessage", ("Data", "deviceId"), 255, True),
            ("Attrs.PcieDeviceMessage", ("Data", "deviceId"), 256, False),
            ("Attrs.PcieDeviceMessage", ("Data", "slot"), "esm", True),
            ("Attrs.PcieDeviceMessage", ("Data", "slot"), "ESM", False),
            ("Attrs.AttrInfoListMessage", ("Data", "AttrType"), 65536, False),
            ("Attrs.LongMessage", ("Data", "i"), -2**63, True),
            ("Attrs.LongMessage", ("Data", "i"), 2**63, False),
            ("Attrs.GpsMessage", ("Data", "Time"), 2**64 - 1, True),
            ("Attrs.GpsMessage", ("Data", "Time"), 2**64, False),
            ("Attrs.SelftestMessage", ("Data", "state"), 3, True),
            ("Attrs.SelftestMessage", ("Data", "state"), 4, False),   # closed
            ("Attrs.GpsMessage", ("Data", "Status"), 99, True),       # open
            ("Attrs.DoubleMessage", ("Data", "d"), "-Infinity", True),
            ("Attrs.DoubleMessage", ("Data", "d"), "nan", False),
            ("Attrs.ComplexMessage", ("Data", "dc"), [1, "NaN"], True),
            ("Attrs.ComplexMessage", ("Data", "dc"), [1], False),
            ("Attrs.ComplexMessage", ("Data", "dc"), [1, 2, 3], False),
            (trace, samples, [0.5, "NaN"], True),
            (trace, samples, [0.5, "one"], False),
            (trace, samples, encoded(3, [0.5]), True),
            (trace, samples, {"type": 3, "len": 0}, True),
            (trace, samples, {"type": 3, "len": 1}, False),           # the text is missing
            (trace, samples, encoded(4, [0.5, 1]), False),            # of complex numbers
            (trace, samples, {**encoded(3, [0.5]), "base64": "AA*="}, False),
            ("Attrs.AttrListMessage", ("Data", "Attributes"), [], True),
            ("Attrs.AttrListMessage", ("Data", "Attributes"),
             [json.loads(attribute(26, Destination=destination))], True),
            ("Attrs.AttrListMessage", ("Data", "Attributes"), [json.loads(message(4))], False),
            ("Attrs.AttrListMessage", ("Data", "Attributes"),
             [json.loads(attribute(999, {}))], False),                # no such class
            ("Attrs.BoolBatchMessage", ("Data", "Messages"),
             [json.loads(attribute(3, {"b": True})), json.loads(attribute(3, {"b": "yes"}))],
             False),
            ("Engine.TransitionMessage", ("Data", "param"), [json.loads(message(4))], True),
            ("Engine.TransitionMessage", ("Data", "param"),           # one of its own kind inside
             [{"MessageID": (2 << 48) + (1 << 16) + 7, "Data": {"event": "x", "param": []}}],
             False),
        )
        for name, path, value, expected in table:
            with self.subTest(name=name, path=path, value=value):
                tree = GOLDEN[name]
                value_at(tree, path)  # the place is there
                self.assertEqual(expected, accepts(name, changed(tree, path, replace(value))))

    def test_one_schema_for_any_message(self):
        validator = Draft202012Validator(json.loads(run("schema", "--all").out))
        for name, tree in GOLDEN.items():
            self.assertTrue(validator.is_valid(tree), name)
        self.assertFalse(validator.is_valid(json.loads(message(999))))
        self.assertFalse(validator.is_valid({**GOLDEN["App.ConnectMessage"], "MessageID": 1}))

    def test_one_class(self):
        self.assertEqual(SCHEMAS["App.ConnectMessage"], json.loads(run("schema", "3.0.0.1").out))


if __name__ == "__main__":
    unittest.main()
