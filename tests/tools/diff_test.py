"""What tolvmsg diff finds different, and which lines of two logs it compares."""

import base64
import json
import os
import struct
import unittest

from tool import Case, attribute, encoded, message, run

TRACE, COMPLEX_TRACE = 6, 7


class Diff(Case):
    def diff(self, left, right, *arguments):
        """Of two logs, each a list of lines."""
        return run("diff", *arguments, self.file("left", b"\n".join(left)),
                   self.file("right", b"\n".join(right)))

    def rows(self, left, right, *arguments):
        done = self.diff(left, right, "--json", *arguments)
        rows = done.rows()
        self.assertEqual((1 if rows else 0, ""), (done.status, done.err))
        return rows

    def test_values(self):
        table = (
            # left data, right data, options, (difference, path, before, after, by)
            ({"a": 1}, {"a": 1.0}, (), []),
            ({"a": 1, "b": 2}, {"b": 2, "a": 1}, (), []),
            ({"a": 1}, {"a": 1.5}, (), [("changed", "Data.a", "1", "1.5", .5)]),
            ({"a": 1}, {"a": "1"}, (), [("changed", "Data.a", "1", '"1"', None)]),
            ({"a": {"b c": 1}}, {"a": {}}, (), [("only-left", 'Data.a."b c"', "1", None, None)]),
            ({}, {"a": [1]}, (), [("only-right", "Data.a", None, "[1]", None)]),
            ({"a": ["x"]}, {"a": ["y", "z"]}, (), [("changed", "Data.a[0]", '"x"', '"y"', None),
                                                   ("only-right", "Data.a[1]", None, '"z"', None)]),
            # the bound itself is within the tolerance; integers that doubles cannot distinguish are
            ({"a": 1}, {"a": 1.5}, ("--tolerance", ".5"), []),
            ({"a": 1}, {"a": 1.5}, ("--tolerance", ".49"),
             [("changed", "Data.a", "1", "1.5", .5)]),
            ({"a": -2}, {"a": -1.5}, ("--relative", ".25"), []),
            ({"a": -2}, {"a": -1.5}, ("--relative", ".24"),
             [("changed", "Data.a", "-2", "-1.5", .5)]),
            ({"a": 2**53}, {"a": 2**53 + 1}, (),
             [("changed", "Data.a", str(2**53), str(2**53 + 1), 0)]),
            ({"a": [2**53]}, {"a": [2**53 + 1]}, (),
             [("changed", "Data.a[0]", str(2**53), str(2**53 + 1), 0)]),
            ({"a": {"t": 1}, "b": 1}, {"a": {"t": 2}, "b": 2}, ("--ignore", "t", "--ignore",
                                                                "Data.b"), []),
        )
        for left, right, options, expected in table:
            with self.subTest(left=left, right=right, options=options):
                rows = self.rows([message(1, left)], [message(1, right)], *options)
                self.assertEqual(expected, [(row["difference"], row["path"], row.get("before"),
                                             row.get("after"), row.get("by")) for row in rows])

    def test_samples(self):
        many = [i / 8 for i in range(1000)]
        other = many[:500] + [v + .25 for v in many[500:510]] + many[510:998] + [9, many[999]]
        bits = {"type": 1, "len": 3, "base64": base64.b64encode(b"\x05").decode()}
        pairs = {"type": 4, "len": 1, "base64": base64.b64encode(struct.pack("<2d", 3, 4)).decode()}
        at = {"difference": "samples", "path": "Data.trace"}
        table = (
            # left, right, options, what a row must hold
            (many, encoded(3, many), (), []),
            (encoded(3, many), encoded(3, other), (),
             [{**at, "count": 11, "ranges": [[500, 509], [998, 998]], "by": 115.75, "at": 998,
               "before": "124.75", "after": "9"}]),
            (many, encoded(3, other), ("--tolerance", ".25"), [{"ranges": [[998, 998]]}]),
            (encoded(3, many), many[:7], (), [{"difference": "length", "before": "1000",
                                               "after": "7"}]),
            ([1, 2, 3], [1, 9], (), [{"difference": "length"}, {**at, "ranges": [[1, 1]]}]),
            ([], {"type": 3, "len": 0}, (), []),
            (["NaN", "Infinity"], ["NaN", "Infinity"], ("--tolerance", "1"), []),
            ([1, "NaN"], encoded(3, [1, 5]), ("--tolerance", "9"),
             [{**at, "by": "Infinity", "before": "NaN", "after": "5"}]),
            (["Infinity"], ["-Infinity"], ("--relative", "9"), [{**at, "by": "Infinity"}]),
            ([True, False, True], bits, (), []),
            ([True, True, True], bits, (), [{**at, "ranges": [[1, 1]], "after": "false"}]),
            ([[3, 4]], pairs, (), []),
            ([[0, 0]], pairs, (), [{**at, "by": 5, "before": "0 + 0i", "after": "3 + 4i"}]),
            ([1, 0, 1], bits, (), [{"difference": "changed"}]),     # numbers are no truth values
            ({**bits, "len": 9}, bits, (), [{"path": "Data.trace.len"}]),  # damaged
            ([0] * 1000, [i % 2 for i in range(1000)], (), [{"rangeCount": 500}]),
        )
        for left, right, options, expected in table:
            with self.subTest(left=str(left)[:60], right=str(right)[:60]):
                rows = self.rows([attribute(TRACE, {"trace": left})],
                                 [attribute(TRACE, {"trace": right})], *options)
                self.assertEqual(expected, [{key: row[key] for key in want}
                                            for row, want in zip(rows, expected, strict=True)])

    def test_lines(self):
        """A word stands for a log: a letter is the id of a message, the digit after it its value."""
        def lines(word):
            return [message(ord(word[i]), {"v": int(word[i + 1])}) for i in range(0, len(word), 2)]

        table = (
            # left, right, lines that differ or are on one side only
            ("a1b1c1", "a1b1c1", []),
            ("a1b1c1", "a1c1", [(2, None)]),
            ("a1c1", "a1b1c1", [(None, 2)]),
            ("a1b1c1", "a1b2c1", [(2, 2)]),
            ("a1b1c1", "b2c2", [(1, None), (2, 1), (3, 2)]),
            ("a1a2a3", "a2a3a4", [(1, None), (None, 3)]),    # equal lines rather than neighbours
            ("a1a2a2", "a2a2a3a3", [(1, None), (None, 3), (None, 4)]),
            ("a1a1a1", "a1a1", [(3, None)]),
            ("a1b1", "b1a1", [(1, None), (None, 2)]),
            ("a1", "b1", [(1, 1)]),                          # two messages, whatever they are
            ("", "a1a1", [(None, 1), (None, 2)]),
            ("a1b1" * 3000 + "c1", "a1b1" * 1000 + "d1" + "a1b1" * 2000 + "c1", [(None, 2001)]),
            ("a1b2" * 1500, "x1" + "a1b3" * 1500,
             [(None, 1)] + [(i, i + 1) for i in range(2, 3001, 2)]),
        )
        for left, right, expected in table:
            with self.subTest(left=left[:20], right=right[:20]):
                rows = self.rows(lines(left), lines(right))
                found = sorted((str(row["left"]), str(row["right"])) for row in rows)
                self.assertEqual(sorted((str(i), str(j)) for i, j in expected), sorted(set(found)))

    def test_files(self):
        whole = json.dumps(json.loads(message(1, {"v": [1, 2]})), indent=4).encode()
        self.assertEqual([], self.rows([message(1, {"v": [1, 2]})], [whole]))
        self.assertEqual([""], [row["path"] for row in self.rows([b"no json"], [b"not json"])])
        self.assertEqual([], self.rows([b"", b"x", b" "], [b"x\r"]))
        self.assertEqual(0, run("diff", os.devnull, os.devnull).status)

    def test_for_people(self):
        done = self.diff([message(2, {"v": 1}), attribute(TRACE, {"trace": [1, 2, 3]}), message(3)],
                         [attribute(TRACE, {"trace": [1, 2.5, 4], "\x1b[2J": 1})], "--id", "2",
                         "--id", "DoubleTraceMessage", "--id", "3.0.0.2")
        self.assertEqual(
            "line 1 only in the first  App::ConnectedMessage\n"
            "line 2 and 1  Attrs::DoubleTraceMessage\n"
            "  Data.trace        2 samples at 1..2, most by 1 at 2 (3 -> 4)\n"
            '  Data."\\u001B[2J"  only in the second: 1\n'
            "2 messages and 1: 1 changed, 1 only in the first, 0 only in the second\n",
            done.out.decode())


if __name__ == "__main__":
    unittest.main()
