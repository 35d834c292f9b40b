"""How tolvmsg decode shows attributes, and whether it reports the valid ones correctly."""

import base64
import json
import re
import struct
import unittest

from tool import attribute, decode, encoded, run

LONG, DOUBLE, BOOL, STRING, ENUM, ENUM_STRINGS, ENUM_INT = 1, 2, 3, 4, 10, 23, 31
MEASURED, MEASURED_STATUS, COMPLEX, INTS = 52, 53, 54, 56
TRACE, COMPLEX_TRACE, COMPLEX_BOOL_TRACE, BOOL_TRACE, SEGMENTED = 6, 7, 8, 9, 35
BATCH = 1 << 32  # what the id of a batch adds to the number of its own
LIST = 21


def about(**fields):
    return {"AttributeMetaData": fields}


def tree(number, data):
    return json.loads(attribute(number, data))


def transition(*messages):
    return json.dumps({"MessageID": (2 << 48) + (1 << 16) + 7,
                       "Data": {"event": 1, "param": messages}}).encode()


def entry(number, text):
    return {"Value": number, "Literal": text}


ENTRIES = [entry(1, "DC"), entry(2, "AC")]
VALID = {"valid": True}
SPACES = re.compile("  +")


def words(line):
    """The lines in which `decode` describes the payload, without alignment."""
    text = run("decode", text=line).out.decode()
    payload = re.search(r"^  data .*\n((?:    .*\n)*)", text, re.M).group(1)
    return [SPACES.sub("  ", row.strip()) for row in payload.splitlines()]


class Valid(unittest.TestCase):
    def check(self, table):
        rows = decode(b"\n".join(attribute(number, data) for number, data, _ in table)).rows()
        for row, (number, data, invalid) in zip(rows, table, strict=True):
            with self.subTest(number=number, data=str(data)[:100]):
                expected = VALID if invalid is None else {"valid": False}
                self.assertEqual(expected, {k: row[k] for k in row if k == "valid"})
                self.assertEqual(invalid is not None, "invalid" in row)
                self.assertRegex(row.get("invalid", ""), invalid or "^$")

    def test_every_class(self):
        """The library decides what is valid; this checks that every class is asked, and the reasons."""
        limited = about(Minimum=1, Maximum=6)
        self.check((
            # number, payload, what the reason must hold (None: valid)
            (DOUBLE, {"d": 6, **limited}, None),
            (DOUBLE, {"d": 6.5, **limited}, "^value 6.5 is above Maximum 6$"),
            (DOUBLE, limited, "d is not initialized"),   # no value
            (DOUBLE, None, "^the payload did not parse$"),
            (TRACE, {"trace": {"type": 3, "len": 1}}, "^the payload did not parse$"),
            (LONG, {"i": 2**62 + 1, **about(Maximum=2**62)}, "^value 4611686018427387905 is above"),
            (BOOL, {"b": False}, None),
            (COMPLEX, {"dc": [9, 9], **about(Maximum=[1, 1])}, None),  # complex numbers: no order
            (MEASURED, {"m": 9, **about(Maximum=1)}, None),            # statistics, no limits
            (MEASURED_STATUS, {"m": 9, **about(LimitStatus=1)}, None),
            (INTS, {"iv": [1, 2, 3], **about(MaxLength=2)}, "^3 elements, MaxLength is 2$"),
            (STRING, {"s": "ééé", **about(MaxLength=4)}, "^6 bytes, MaxLength is 4$"),
            (STRING, {"s": "aB", **about(ValidCharacters="[a-z]*")}, '^value "aB" does not match'),
            (STRING, {"s": "a", **about(ValidCharacters="[a-")}, "^ValidCharacters: .+"),
            (ENUM, {"value": ENTRIES[1], "enums": ENTRIES, **about(DisabledList=[False, True])},
             '^2 "AC" is disabled in enums$'),
            (ENUM_INT, {"value": 4, "enums": [3]}, "^4 is not in enums$"),
            (ENUM_STRINGS, {"value": "x", "enums": ["x"], **about(DisabledList=[True])},
             '^"x" is disabled in enums$'),
            *((number, {"trace": [], "segments": []}, None) for number in
              (TRACE, COMPLEX_TRACE, COMPLEX_BOOL_TRACE, BOOL_TRACE, 35, 36, 37, 38)),
        ))

    def test_no_attribute(self):
        for number, data in ((16, {"AppID": "a"}), (LIST, {"Attributes": []}), (99, None)):
            self.assertFalse({"valid", "invalid", "inside"} & set(decode(
                attribute(number, data)).rows()[0]))

    def test_inside(self):
        good, bad = tree(BOOL, {"b": True}), tree(DOUBLE, {"d": 7, **about(Maximum=6)})
        name = tree(16, {})  # no attribute
        above = {"valid": False, "invalid": "value 7 is above Maximum 6"}
        table = (
            (attribute(DOUBLE + BATCH, {"Messages": [tree(DOUBLE, {"d": 1}), bad]}),
             {"Data.Messages[0]": VALID, "Data.Messages[1]": above}),
            # the batch determines the class, not the id of the entry
            (attribute(DOUBLE + BATCH, {"Messages": [{**bad, "MessageID": good["MessageID"]}]}),
             {"Data.Messages[0]": above}),
            (attribute(LIST, {"Attributes": [good, name, bad]}),
             {"Data.Attributes[0]": VALID, "Data.Attributes[2]": above}),
            (attribute(20, {"StartElementIndex": 5, "Attributes": [bad]}),
             {"Data.Attributes[0]": above}),
            (transition(name, bad), {"Data.param[1]": above}),
            (transition(tree(LIST, {"Attributes": [tree(LIST, {"Attributes": [bad]})]})),
             {"Data.param[0].Data.Attributes[0].Data.Attributes[0]": above}),
        )
        rows = decode(b"\n".join(line for line, _ in table)).rows()
        for row, (line, inside) in zip(rows, table, strict=True):
            with self.subTest(line):
                self.assertNotIn("valid", row)
                self.assertEqual(inside, {one.pop("path"): one for one in row["inside"]})
                shown = "\n".join(words(line))
                self.assertEqual(VALID in inside.values(), "valid  yes" in shown)
                self.assertEqual(1, shown.count("valid  no: value 7 is above Maximum 6"))


class Words(unittest.TestCase):
    def check(self, table):
        for number, data, expected in table:
            with self.subTest(number=number, data=str(data)[:100]):
                self.assertEqual(expected, words(attribute(number, data)))

    def test_numbers(self):
        volt = {"CurrentBroadcastUnit": "V", "Precision": 2}
        self.check((
            (DOUBLE, {"d": 1.5}, ["value  1.5", "valid  yes"]),
            (DOUBLE, {"d": 1.5, **about(Name="Level", **volt)},
             ['name  "Level"', "value  1.50 V", "valid  yes"]),
            # digits hidden by the precision are shown
            (DOUBLE, {"d": 1.23456, **about(**volt)},
             ["value  1.23 V  (exactly 1.23456)", "valid  yes"]),
            (DOUBLE, {"d": 1e300, **about(**volt)}, ["value  1e300 V", "valid  yes"]),
            (DOUBLE, {"d": "-Infinity", **about(**volt)}, ["value  -Infinity V", "valid  yes"]),
            (DOUBLE, {"d": 1, **about(CurrentBroadcastUnit="°C")}, ["value  1 °C", "valid  yes"]),
            (DOUBLE, {"d": 1, **about(CurrentBroadcastUnit="\x1b[2J")},
             [r'value  1 "\u001b[2J"', "valid  yes"]),
            # an implausible precision is ignored
            (DOUBLE, {"d": 1.5, **about(Precision=-1)},
             ["value  1.5", "valid  yes", "AttributeMetaData", "Precision  -1"]),
            (DOUBLE, {"d": 1.5, **about(Precision=2**31 - 1)},
             ["value  1.5", "valid  yes", "AttributeMetaData", "Precision  2147483647"]),
            (LONG, {"i": 7, **about(**volt)},
             ["value  7 V", "valid  yes", "AttributeMetaData", "Precision  2"]),
            (DOUBLE, about(Maximum=6),
             ["value  not set", "limits  at most 6",
              "valid  no: Tolv::MetaData::Reflector::operator()(): d is not initialized in Attrs::AttrWithMetaData<double, Attrs::RangedMetaData<double>>"]),
            (COMPLEX, {"dc": [1.5, -2], **about(CurrentBroadcastUnit="V")},
             ["value  (1.5 - 2i) V", "valid  yes"]),
            # what has no description is shown as it is
            (BOOL, {"b": True, **about(Name="n", ControlAttrID=["a"])},
             ['name  "n"', "value  true", "valid  yes", "AttributeMetaData",
              'ControlAttrID  ["a"]']),
            (MEASURED_STATUS,
             {"m": 1, **about(Average=2, Maximum=3, Percent=4, LimitStatus=5, **volt)},
             ["value  1.00 V", "measured  average 2.00 V, maximum 3.00 V, percent 4",
              "valid  yes", "AttributeMetaData", "LimitStatus  5"]),
        ))

    def test_limits(self):
        unit = {"CurrentBroadcastUnit": "Hz"}
        self.check((
            (DOUBLE, {"d": 1, **about(Minimum=0, Maximum=6e9, Step=0.1, **unit)},
             ["value  1 Hz", "limits  0 to 6e9 Hz, step 0.1", "valid  yes"]),
            (DOUBLE, {"d": 1, **about(Minimum=2, **unit)},
             ["value  1 Hz", "limits  at least 2 Hz", "valid  no: value 1 is below Minimum 2"]),
            (STRING, {"s": "a", **about(MaxLength=1, ValidCharacters="[a-z]")},
             ['value  "a"', 'limits  at most 1 byte, must match "[a-z]"', "valid  yes"]),
            (INTS, {"iv": list(range(9)), **about(MaxLength=9)},
             ["value  9 numbers: 0, 1, 2, 3, 4, 5, 6, 7, ...", "limits  at most 9 numbers",
              "valid  yes"]),
        ))

    def test_entries(self):
        self.check((
            (ENUM, {"value": ENTRIES[1], "enums": ENTRIES, **about(DisabledList=[True])},
             ['value  2 "AC"', "entries  2, 1 disabled", '1 "DC"  disabled', '2 "AC"  current',
              "valid  yes"]),
            (ENUM_STRINGS, {"value": "b", "enums": ["a", "b"], **about(DisabledList=[False, True])},
             ['value  "b"', "entries  2, 1 disabled", '"a"', '"b"  current  disabled',
              'valid  no: "b" is disabled in enums']),
            (ENUM, {"value": {"Value": 2}, "enums": ENTRIES[1:]},
             ['value  2 ?', "entries  1, 0 disabled", '2 "AC"',
              "valid  no: Tolv::MetaData::Reflector::operator()(): Literal is not initialized in Attrs::EnumVal"]),
            # the current entry is shown wherever it is; flags without an entry are shown too
            (ENUM_INT, {"value": 130, "enums": list(range(100, 150)),
                        **about(DisabledList=[False] * 50 + [True])},
             ["value  130", "entries  50, 0 disabled", *map(str, range(100, 120)), "130  current",
              "... 29 more", "valid  yes", "AttributeMetaData",
              "DisabledList  [" + "false, " * 8 + "...] (51 entries)"]),
        ))

    def test_traces(self):
        bits = {"type": 1, "len": 10, "base64": base64.b64encode(b"\x05\x02").decode()}
        pairs = {"type": 4, "len": 2,
                 "base64": base64.b64encode(struct.pack("<4d", 3, -4, 0, 1)).decode()}
        magnitude = "  (of the magnitude)"
        self.check((
            (TRACE, {"trace": []}, ["count  0 samples", "valid  yes"]),
            (TRACE, {"trace": encoded(3, [i / 2 for i in range(1001)]),
                     **about(CurrentBroadcastUnit="V", Maximum=1)},
             ["count  1001 samples", "first  0, 0.5, 1, 1.5, 2, 2.5, 3, 3.5, ... V",
              "minimum  0 V", "maximum  500 V", "mean  250 V", "limits  at most 1 V",
              "valid  yes"]),
            (TRACE, {"trace": [2, "NaN", -1]},
             ["count  3 samples", "first  2, NaN, -1", "minimum  -1", "maximum  2", "mean  0.5",
              "NaN  1 sample, not counted in the statistics", "valid  yes"]),
            (TRACE, {"trace": ["NaN", "NaN"]},
             ["count  2 samples", "first  NaN, NaN",
              "NaN  2 samples, not counted in the statistics", "valid  yes"]),
            (TRACE, {"trace": ["Infinity", 1]},
             ["count  2 samples", "first  Infinity, 1", "minimum  1", "maximum  Infinity",
              "mean  Infinity", "valid  yes"]),
            (COMPLEX_TRACE, {"trace": pairs},
             ["count  2 samples", "first  3 - 4i, 0 + 1i", "minimum  1" + magnitude,
              "maximum  5" + magnitude, "mean  3" + magnitude, "valid  yes"]),
            (COMPLEX_TRACE, {"trace": [["Infinity", "NaN"], [3, 4]]},
             ["count  2 samples", "first  Infinity + NaNi, 3 + 4i", "minimum  5" + magnitude,
              "maximum  5" + magnitude, "mean  5" + magnitude,
              "NaN  1 sample, not counted in the statistics", "valid  yes"]),
            (BOOL_TRACE, {"trace": bits},
             ["count  10 samples",
              "first  true, false, true, false, false, false, false, false, ...",
              "minimum  0  (true counts as 1)", "maximum  1  (true counts as 1)",
              "mean  0.3  (true counts as 1)", "valid  yes"]),
            (COMPLEX_BOOL_TRACE, {"trace": [[True, False]]},
             ["count  1 sample", "first  (true, false)",
              *(f"{label}  1  (of the magnitude; true counts as 1)"
                for label in ("minimum", "maximum", "mean")), "valid  yes"]),
            (SEGMENTED, {"trace": [5], "segments": [{"offset": 0, "length": 1},
                                                    {"offset": 2**63, "length": 2**64 - 1}]},
             ["count  1 sample", "first  5", "minimum  5", "maximum  5", "mean  5",
              "segments  2 segments", "1 from 0, 18446744073709551615 from 9223372036854775808",
              "valid  yes"]),
        ))

    def test_invalid_entries_among_those_left_out(self):
        messages = [tree(DOUBLE, {"d": i, **about(Maximum=21)}) for i in range(25)]
        self.assertEqual("... 5 more, 3 of them not valid, first [22]",
                         words(attribute(DOUBLE + BATCH, {"Messages": messages}))[-1])


if __name__ == "__main__":
    unittest.main()
