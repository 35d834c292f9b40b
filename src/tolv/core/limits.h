#pragma once

#include <cstddef>

namespace Tolv {

/// Bounds on what is accepted from a peer. A text or tree beyond a bound is refused with
/// `Exception::InvalidParameter`, a pattern with `std::regex_error`. What reads a text
/// (`ReaderJson::Read`, `CreateFromText`, `copyFromText`) takes other bounds with a call; the
/// others are the same for all.
struct Limits {
    /// Levels of arrays and objects in one another. Stops a text such as a million "[" from
    /// exhausting the stack of whoever walks the tree.
    std::size_t depth = 256;

    /// Bytes of a text. Stops one without end, and so bounds the memory of a tree: at most 30 bytes
    /// for each byte of its text (measured on 64 bits: 28 for arrays of one array, 24 for numbers
    /// of one digit while they are read, 8 afterwards).
    std::size_t textBytes = std::size_t{256} << 20U;

    /// Entries of one array, and keys of one object. Stops a text of "{},{}," from becoming a list
    /// of records, each of which takes up to 922 bytes (measured on 64 bits).
    std::size_t elements = std::size_t{1} << 24U;

    /// Bytes of a key. Stops one of megabytes from being hashed and compared with each lookup.
    std::size_t keyBytes = std::size_t{1} << 20U;

    /// Nested messages: an error within a message, parameters, attributes of an array. A text of
    /// the greatest depth holds 127. Keeps a tree that was built by hand, or read with a greater
    /// depth, and a message that contains itself from exhausting the stack, of which each nested
    /// message takes at most 930 bytes, with a `ReadReport` or without (measured; g++ 12,
    /// optimized; 1,750 bytes otherwise). Readers do not take another bound.
    std::size_t messageNesting = 512;

    /// Events that `ReadReport::events` gives, and problems that `explain` and `unknownLiterals`
    /// give; the latter say how many more there are. Stops a text of a million "{}", each a record
    /// with many fields, from becoming many times as much that nobody reads.
    std::size_t reportEntries = 4096;

    // The four below bound "ValidCharacters", a regular expression that comes from a peer as does
    // the text that it is matched with. The standard library's compiler and matcher recurse:
    // together the first three keep them within 260 KB of stack (measured; g++ 12, optimized;
    // 400 KB otherwise, without sanitizers).

    /// Bytes of a pattern. Compiling takes up to 150 bytes of stack and 30 microseconds for each.
    std::size_t patternBytes = 1024;

    /// Groups of a pattern in one another. Compiling takes up to 550 bytes of stack for each.
    std::size_t patternNesting = 64;

    /// States of the automaton that libstdc++ builds for a pattern: 3 for the pattern, and with all
    /// repetitions written out 1 for each character, bracket, anchor, "*", "+", "?", "|" and
    /// repetition that may be left out. "a{2000}" is within, "(a{100}){100}" is not. Matching takes
    /// up to 130 bytes of stack for each. The compiler may build 4 times as many on the way.
    std::size_t patternStates = 2048;

    /// States of the pattern times bytes of the text: a million letters match "[a-z]*", which is 5
    /// million. Each takes up to 40 nanoseconds in optimized code, so matching ends within four
    /// seconds.
    std::size_t matchSteps = 100'000'000;
};

} // namespace Tolv
