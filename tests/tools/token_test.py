"""How tolvmsg token shows tokens, and whether it recognizes authentic ones."""

import base64
import hashlib
import hmac
import json
import os
import unittest

from tool import Case, attribute, decode, run

KEY = b"correct horse battery"
HEADER = {"alg": "HS256", "typ": "JWT"}
MESSAGE = json.loads(attribute(2, {"d": 7, "AttributeMetaData": {"Maximum": 6}}))
PAYLOAD = {"aud": 7, "exp": "2030", "iat": "2020", "msg": MESSAGE}


def segment(content):
    if not isinstance(content, bytes):
        content = json.dumps(content).encode()
    return base64.b64encode(content).decode()


def signature(data, key=KEY):
    return segment(hmac.new(key, data.encode(), hashlib.sha256).digest())


def token(payload=PAYLOAD, header=HEADER, key=KEY):
    data = f"{segment(header)}.{segment(payload)}"
    return f"{data}.{signature(data, key)}"


class Token(Case):
    def setUp(self):
        super().setUp()
        self.key_file = self.file("key", KEY + b"\n")

    def show(self, text, *arguments, key_file=None):
        """Runs the command with and without --json, and looks for the key in both outputs."""
        if not isinstance(text, bytes):
            text = text.encode()
        if key_file is not None:
            arguments += ("--key-file", key_file)
        both = [run("token", *form, *arguments, "-", text=text) for form in ((), ("--json",))]
        for done in both:
            for form in (KEY, base64.b64encode(KEY), KEY.hex().encode()):
                self.assertNotIn(form, done.out + done.err.encode())
        self.assertEqual(both[0].status, both[1].status)
        return both

    def test_verification(self):
        good = token()
        data, sign = good.rsplit(".", 1)
        last = base64.b64decode(sign)
        last = segment(last[:-1] + bytes([last[-1] ^ 0x80]))
        wrong = "the signature does not match the key and content"
        table = (
            # token, status, verdict, what the reason must be
            (good, 0, "authentic", None),
            (token({"sub": [1]}), 0, "authentic", None),
            (token(7), 0, "authentic", None),
            (f"{data}.{last}", 1, "not authentic", wrong),
            (f"{data}.", 1, "not authentic", wrong),
            (token(key=KEY + b"\n"), 1, "not authentic", wrong),  # the line end is no part of it
            # the signature of another algorithm is not checked, even if it would be right
            *((token(header={**HEADER, "alg": alg}), 1, "not authentic",
               f'"alg" is "{alg}", the key is for HS256') for alg in ("HS512", "none", "hs256")),
        )
        for text, status, verification, reason in table:
            with self.subTest(text):
                people, programs = self.show(text, key_file=self.key_file)
                self.assertEqual((status, "", ""), (people.status, people.err, programs.err))
                row, = programs.rows()
                self.assertEqual((verification, reason), (row["verification"], row.get("reason")))
                self.assertEqual("token  " + verification + (f": {reason}" if reason else ""),
                                 people.out.decode().splitlines()[0])
                people, programs = self.show(text)
                self.assertEqual(0, people.status)
                self.assertEqual("not verified", programs.rows()[0]["verification"])
                self.assertTrue(people.out.startswith(b"token  not verified: no --key-file\n"))

    def test_content(self):
        people, programs = self.show(token(), key_file=self.key_file)
        row, = programs.rows()
        self.assertEqual((HEADER, PAYLOAD), (row["header"], row["payload"]))
        decoded, = decode(json.dumps(MESSAGE).encode()).rows()
        del decoded["line"]
        self.assertEqual("value 7 is above Maximum 6", decoded["invalid"])
        self.assertEqual(decoded, row["message"])
        self.assertEqual("""\
token  authentic
  header
    alg  "HS256"
    typ  "JWT"
  payload
    aud  7
    exp  "2030"
    iat  "2020"
""" + run("decode", text=json.dumps(MESSAGE).encode()).out.decode().rstrip("\n").replace(
            "line 1", "message", 1) + "\n", people.out.decode())

        table = (
            # "msg", what stands under "message"
            (None, None),
            ({"a": 1}, None),
            ({"MessageID": 5}, {"id": "0x0000000000000005",
                                "error": "unknown id 0x0000000000000005 (0.0.0.5)"}),
        )
        for inner, shown in table:
            with self.subTest(inner):
                people, programs = self.show(token({**PAYLOAD, "msg": inner}))
                self.assertEqual((0, inner, shown),
                                 (programs.status, programs.rows()[0]["payload"]["msg"],
                                  programs.rows()[0].get("message")))
                self.assertEqual(shown is None, b"    msg" in people.out)

    def test_malformed(self):
        header, payload, sign = token().split(".")
        table = (
            (b"", "expected JWT to contain '.' character"),
            (header, "expected JWT to contain '.' character"),
            (f"{header}.{payload}", "expected JWT to contain 3 segments, got 2"),
            (f"{header}.{payload}.x.{sign}", "expected JWT to contain only 3 segments"),
            (f"{header}.{payload}.x.y.{sign}", "expected JWT to contain only 3 segments"),
            (f"{header}.!{payload[1:]}.{sign}", "base64"),
            (f"{header}.{payload[:-1]}.{sign}", "base64"),
            (f"{header}.{payload[:40]}\n{payload[40:]}.{sign}", "base64"),
            (f"{header}.{segment(b'{')}.{sign}", "byte 1"),
            (f"{segment(b'{')}.{payload}.{sign}", "byte 1"),
            (f"{header}.{segment(b'')}.{sign}", "byte 0"),
            (token(header={**HEADER, "typ": "jwt"}), "invalid type in JWT header"),
            (token(header={"typ": "JWT"}), "alg"),
            (token(header={**HEADER, "alg": 256}), ""),
            (token(header=[]), ""),
        )
        for text, error in table:
            with self.subTest(text):
                for key_file in (self.key_file, None):
                    for done in self.show(text, key_file=key_file):
                        self.assertEqual((2, b""), (done.status, done.out))
                        self.assertIn(error, done.err)
                        self.assertTrue(done.err.startswith("tolvmsg: no token in the standard"))
                        self.assertEqual(1, done.err.count("\n"))

    def test_files(self):
        text = token().encode()
        for around in (b"%b", b"%b\n", b"%b\r\n", b" \t\n%b \n\n"):
            done = run("token", "--key-file", self.key_file, self.file("token", around % text))
            self.assertEqual((0, ""), (done.status, done.err))
        missing = os.path.join(self.folder, "missing")
        empty = self.file("empty", b"\n")
        self.check_refusals(
            *((("token", *arguments), complaint) for arguments, complaint in (
                ((missing,), missing),
                ((self.folder,), self.folder),
                (("--key-file", missing, "-"), missing),
                (("--key-file", self.folder, "-"), self.folder),
                (("--key-file", empty, "-"), empty),
                (("--key-file", "", "-"), "empty"),
                (("--key-file", self.key_file), "FILE"),
                (("-", "-"), ""),
                ((), "FILE"))), text=text)
        # the two files swapped: the key is not shown
        for arguments in ((), ("--key-file", self.key_file)):
            done = run("token", *arguments, self.key_file)
            self.assertEqual((2, b""), (done.status, done.out))
            self.assertIn("'.'", done.err)
            self.assertNotIn(KEY.decode(), done.err)


if __name__ == "__main__":
    unittest.main()
