"""What the headers refuse to compile, and in which words.

Usage: refused_test.py COMPILER INCLUDE_FOLDER WORK_FOLDER
"""
import concurrent.futures
import pathlib
import re
import subprocess
import sys
import unittest

COMPILER, INCLUDE, WORK = sys.argv[1:4]

PRELUDE = """
#include <tolv/messages.h>
using namespace Tolv;
using namespace Tolv::Msgs;
using namespace Tolv::MetaData;

enum class Mode { off, on };
struct NoConversion {};
struct Odd : MirroredObject {
    Reflector<unsigned char> deviceId{this, "id"_key, Required};
    Reflector<unsigned long long> size{this, "size"_key, Required};
    Reflector<double> real{this, "real"_key, Required};
    Reflector<std::complex<double>> complex{this, "complex"_key, Required};
    Reflector<std::string> text{this, "text"_key, Required};
    Reflector<Structs::Slot> slot{this, "slot"_key, Required};
    ReflectorArray<double> list{this, "list"_key, Required};
};
struct Judged : MirroredObject {
    ReflectorLambda<int> state{this, field<"state">, 1};
};
App::Connect connect;
Odd odd;
int n = 3;
double d = 3.7;
long long big = 5'000'000'000;
App::ConnectMessage makeConnect();
Attrs::DoubleTraceMessage makeTrace();
Element makeTree();
Message& base();
"""

FRACTION = "a double does not fit into this field without loss"
VARIABLE = "this integer may not fit into the field without loss"
NUMBER = "this number does not fit into the type of the field"
NOT_NUMBER = "this field takes a number or a boolean"
WORD = "a number is neither a text nor an enumerator"
CONVERSION = "this type has no conversion to an element"
FIELD = "a field holds a bool, an unsigned char"
LIST = "a list holds values of the types that have a conversion"

# The line, and what the compiler must say of it, as a regular expression.
REFUSED = (
    # a fraction, a number too large, a pointer
    ("connect.maxVersion = 3.7;", FRACTION),
    ("connect.maxVersion = 3e9;", FRACTION),
    ("connect.maxVersion = d;", FRACTION),
    ("connect.maxVersion.assign(3.7);", FRACTION),
    ("connect.maxVersion = 5'000'000'000;", NUMBER),
    ("connect.maxVersion = big;", VARIABLE),
    ("connect.maxVersion.assign(big);", VARIABLE),
    ("connect.maxVersion = odd.size();", "constexpr|constant expression"),
    ('connect.binaryTransmission = "no";', NOT_NUMBER),
    ('connect.binaryTransmission.assign("no");', NOT_NUMBER),
    ("connect.binaryTransmission = n;", VARIABLE),
    ("connect.binaryTransmission = 2;", NUMBER),
    ("connect.maxVersion = nullptr;", NOT_NUMBER),
    ("connect.maxVersion = Mode::on;", NOT_NUMBER),
    ("connect.maxVersion = Identifier(3);", VARIABLE),
    ("odd.deviceId = n;", VARIABLE),
    ("odd.deviceId = 300;", NUMBER),
    ("odd.deviceId = -1;", NUMBER),
    ("odd.size = n;", VARIABLE),
    ("odd.size = -1;", NUMBER),
    ("odd.complex = big;", VARIABLE),
    ("odd.real = big;", VARIABLE),
    ("odd.text = 0;", WORD),
    ("odd.slot = 1;", WORD),
    ("Structs::SelftestData().state.assign(2.5);", FRACTION),
    ("ReflectorLambda<int> field{nullptr, \"k\"_key, Required};", "ReflectorLambda"),
    ("Reflector<int> field{nullptr, \"k\"_key, Required, Required};", "Reflector"),
    ("Reflector<bool> field{nullptr, \"k\"_key, Required, \"yes\"};", NOT_NUMBER),
    ("Reflector<int> field{nullptr, \"k\"_key, 1};", "Reflector"),
    ("ReflectorArray<int> field{nullptr, \"k\"_key, Required, 1};", "ReflectorArray"),
    # what a record says of its fields
    ("Reflector<int> one{nullptr, field<\"\">, Required};", "the key of a field must not be empty"),
    ("Reflector<int> one{nullptr, field<\"k\">, Required, 2.5};", FRACTION),
    ("Reflector<std::string> one{nullptr, field<\"k\">, Required, 3};", "Reflector"),
    ("Reflector<std::string> one{nullptr, field<\"k\", Words{\"0 off\"}>, Required};",
     "Words and OnlyWords name the numbers of an integer field"),
    ("ReflectorArray<int> one{nullptr, field<\"k\", OnlyWords{\"0 off\"}>, Required};",
     "Words and OnlyWords name the numbers of an integer field"),
    ("Reflector<int> one{nullptr, field<\"k\", Words{\"off | 1 on\"}>, Required};",
     "the words of a field are written as"),
    ("Reflector<int> one{nullptr, field<\"k\", OneOf<Structs::TriggerSources>{}>, Required};",
     "OneOf names the strings of a text field"),
    ("Reflector<std::string> one{nullptr, field<\"k\", Within{0, 5}>, Required};",
     "Within bounds the numbers of a field"),
    ("Reflector<int> one{nullptr, field<\"k\", Doc{\"a\"}, Doc{\"b\"}>, Required};",
     "says each kind of word once"),
    ("Judged judged; Judged copy(judged);", "deleted"),
    # what messages and records are made of
    ('Attrs::BoolMessage message("false");', NOT_NUMBER),
    ("Attrs::LongMessage message(2.7);", FRACTION),
    ("Attrs::LongMessage message{Attrs::LongMessage(1).payload().value() + 0.5};", FRACTION),
    ('App::ConnectToAppResultData data("uuid");', NOT_NUMBER),
    ("App::Connect data(1.5, 1, true);", FRACTION),
    ('App::Connect data(1, 1, "yes");', NOT_NUMBER),
    ("Attrs::TraceSegment segment(n, 2);", VARIABLE),
    ("App::PingData().setMaxVersion(-1);", NUMBER),
    ("Attrs::EnumVal value(2.5, \"x\");", FRACTION),
    ("odd.list = {0, 0, \"x\"};", "operator="),
    # references into what ends with the expression
    ("makeConnect().editPayload().maxVersion = 3;", "editPayload"),
    ("auto& value = makeTrace().payload().trace.edit();", "edit"),
    ("for (auto const& entry : makeTree().array()) (void)entry;", "array"),
    ("auto const view = makeTree().asStringView();", "asStringView"),
    ('auto const* const child = makeTree().find("k");', "find"),
    ('Key const key(std::string("k"));', "Key"),
    # types that are nothing to the tree
    ("Element e; SetAs<std::size_t>(3, e);", CONVERSION),
    ("Element e; SetAs(NoConversion(), e);", CONVERSION),
    ("Element e; float f = 0; GetAs(e, f);", CONVERSION),
    ("Element e; auto v = GetAs<std::vector<double>>(e); (void)v;", CONVERSION),
    ("Reflector<float> field{nullptr, \"k\"_key, Required};", FIELD),
    ("Reflector<Mode> field{nullptr, \"k\"_key, Required};", FIELD),
    ("ReflectorArray<float> field{nullptr, \"k\"_key, Required};", LIST),
    ("ReflectorArray<NoConversion> field{nullptr, \"k\"_key, Required};", LIST),
    ("PayloadMessageHelper<App::AppMessage, NoConversion, 900> message;",
     "a payload is a record"),
    ("SimpleMessageHelper<NoConversion, 900> message;", "the base of a message is a family"),
    ("App::ConnectMessage message; message.setPayload(App::Connected());", "setPayload"),
)

# What is as natural as it looks.
ACCEPTED = """
    unsigned char const small = 7;
    connect.maxVersion = 3; connect.maxVersion = n; connect.maxVersion = small;
    connect.maxVersion = 'a'; connect.maxVersion = Structs::GPS::rtkFix; connect.maxVersion = {3};
    connect.maxVersion.assign(3); connect.maxVersion.assign(small); odd.size.assign(3);
    connect.binaryTransmission = true; connect.binaryTransmission = 1;
    odd.deviceId = 200; odd.deviceId = small; odd.deviceId.assign(200);
    odd.size = 3; odd.size = sizeof(int); odd.size = Identifier(3);
    odd.real = 3; odd.real = n; odd.real = 1.5F; odd.real = 5'000'000'000;
    odd.complex = 3; odd.complex = 2.5; odd.complex = std::complex<double>(1, 2);
    odd.text = "x"; odd.text = std::string("x"); odd.text = {};
    odd.list = {0, 0, 1}; odd.list = {}; odd.list = std::vector<double>(3);
    ReflectorArray<bool> flags{nullptr, "k"_key, Required, {true}};
    ReflectedAddress address{nullptr, "k"_key, {"x"}};
    Attrs::StringMessage text("x", {"from"}, {"to"});
    Attrs::DoubleMessage number(3);
    App::ConnectMessage both({}, {"to"});
    App::ConnectMessage mixed({}, Address{"to"});
    App::ConnectMessage withPayload({3, 1, true}, {"from"}, {"to"});
    App::ConnectToAppResultData byResult(true); App::ConnectToAppResultData byPort(80);
    App::Connect const& payload = makeConnect().payload();
    std::vector<double> const& samples = makeTrace().payload().trace();
    Object const& object = makeTree();
    Element const& child = makeTree()["k"];
    (void)payload; (void)samples; (void)object; (void)child; (void)address; (void)flags;
"""


def compiled(code, *more):
    """Exit code and diagnostics."""
    run = subprocess.run(
        [COMPILER, "-std=c++20", "-I" + INCLUDE, "-fno-diagnostics-color", *more, "-x", "c++", "-"],
        input=code, capture_output=True, text=True, check=False)
    return run.returncode, run.stderr


def judged(row):
    code, words = row
    result, said = compiled(f"void test() {{ {code} }}\n", "-fsyntax-only", "-include",
                            f"{WORK}/prelude.h")
    return code, words, result, said


class Refused(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = pathlib.Path(WORK)
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "prelude.h").write_text(PRELUDE)
        made = folder / "prelude.h.gch"
        made.unlink(missing_ok=True)
        subprocess.run([COMPILER, "-std=c++20", "-I" + INCLUDE, "-x", "c++-header",
                        str(folder / "prelude.h"), "-o", str(made)], check=True)

    def test_refused(self):
        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            for code, words, result, said in pool.map(judged, REFUSED):
                with self.subTest(code):
                    self.assertNotEqual(result, 0, "it compiles")
                    self.assertRegex(said, re.compile(words))
                    lines = said.count("\n")
                    self.assertLess(lines, 50, f"{lines} lines:\n{said}")
                    if "--lengths" in sys.argv:
                        print(f"{lines:4} {code}")

    def test_accepted(self):
        result, said = compiled(f"void test() {{ {ACCEPTED} }}\n", "-fsyntax-only", "-Wall",
                                "-Wextra", "-Wconversion", "-Werror", "-include",
                                f"{WORK}/prelude.h")
        self.assertEqual(result, 0, said)


unittest.main(argv=sys.argv[:1])
