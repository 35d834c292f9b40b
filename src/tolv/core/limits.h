#pragma once

#include <cstddef>

namespace Tolv {

/// Limits on input from peers. A text or tree that exceeds one is refused with
/// `Exception::InvalidParameter`, a pattern with `std::regex_error`. `ReaderJson::Read`,
/// `CreateFromText` and `copyFromText` accept different limits per call; everything else uses the
/// defaults.
struct Limits {
    /// Levels of nested arrays and objects. Prevents a text such as a million "[" from exhausting
    /// the stack of code that walks the tree.
    std::size_t depth = 256;

    /// Bytes of a text. Stops an endless text, and so limits the memory of a tree, which takes at
    /// most 30 bytes per byte of text (measured on 64 bits: 28 for arrays of one array; 24 for
    /// one-digit numbers while they are read, and 8 afterwards).
    std::size_t textBytes = std::size_t{256} << 20U;

    /// Entries of one array, and keys of one object. Limits the list of records that a text of
    /// "{},{}," becomes; each record takes up to 922 bytes (measured on 64 bits).
    std::size_t elements = std::size_t{1} << 24U;

    /// Bytes of a key. Prevents a key of megabytes from being hashed and compared in each lookup.
    std::size_t keyBytes = std::size_t{1} << 20U;

    /// Nested messages: an error within a message, parameters, attributes of an array. A text of
    /// the default depth can hold 127. This limit protects the stack from a message that contains
    /// itself and from trees that were built by hand or read with a greater depth. Each nested
    /// message takes at most 930 bytes of stack, with or without a `ReadReport` (measured with g++
    /// 12, optimized; 1,750 bytes otherwise). It cannot be changed per call.
    std::size_t messageNesting = 512;

    /// Events that `ReadReport::events` returns, and problems that `explain` and `unknownLiterals`
    /// return; the latter two also say how many more there are. Prevents a text of a million "{}",
    /// each a record with many fields, from producing many times its size in output that nobody
    /// reads.
    std::size_t reportEntries = 4096;

    // The next four limit "ValidCharacters", a regular expression that comes from a peer, as does
    // the text to be matched. The compiler and the matcher of the standard library are recursive;
    // the first three limits together keep them within 260 KB of stack (measured with g++ 12,
    // optimized; 400 KB otherwise, without sanitizers).

    /// Bytes of a pattern. Compiling takes up to 150 bytes of stack and 30 microseconds per byte.
    std::size_t patternBytes = 1024;

    /// Levels of nested groups in a pattern. Compiling takes up to 550 bytes of stack per level.
    std::size_t patternNesting = 64;

    /// States of the automaton that libstdc++ builds for a pattern: 3 for the pattern and, with all
    /// repetitions expanded, 1 for each character, bracket, anchor, "*", "+", "?", "|" and optional
    /// repetition. "a{2000}" is within the limit, "(a{100}){100}" is not. Matching takes up to 130
    /// bytes of stack per state. The compiler may temporarily build 4 times as many.
    std::size_t patternStates = 2048;

    /// States of the pattern times bytes of the text: matching a million letters with "[a-z]*"
    /// takes 5 million steps. Each takes up to 40 nanoseconds in optimized code, so matching ends
    /// within four seconds.
    std::size_t matchSteps = 100'000'000;
};

} // namespace Tolv
