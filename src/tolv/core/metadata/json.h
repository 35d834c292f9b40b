#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

#include <tolv/core/export.h>
#include <tolv/core/limits.h>
#include <tolv/core/metadata/element.h>

namespace Tolv::MetaData {

/// Reads JSON text (RFC 8259) into a tree, strictly: valid UTF-8, no comment, no trailing comma,
/// nothing but white space behind the value, and no key twice in one object (RFC 7493).
///
/// Integers become signed numbers where they fit 64 bits signed, else unsigned ones where they fit,
/// else, like all numbers with a fraction or an exponent, the nearest double. "-0" is the double
/// -0.0; a number too large for a double is refused.
struct TOLV_CORE_API ReaderJson {
    /// Replaces `element` by the value of `text`.
    /// @throws Exception::InvalidParameter whose text says what is wrong and at which byte, counted
    /// from 0. `element` is then as it was.
    static void Read(Element& element, std::string_view text, Limits const& limits = {});

    /// The same without a copy of long texts, such as encoded traces: strings of 4096 bytes and
    /// more without escapes stay where they are, and keep the whole of `text` alive as long as an
    /// element refers to one. `text` must not change any more.
    /// @throws Exception::InvalidParameter also when there is no text.
    static void Read(Element& element, std::shared_ptr<std::string const> const& text,
                     Limits const& limits = {});

    /// The same with all that is left in `stream`.
    /// @throws Exception::InvalidParameter also when the stream fails.
    static void Read(Element& element, std::istream& stream, Limits const& limits = {});
};

/// Writes a tree as JSON text (RFC 8259) that `ReaderJson` reads back as the same tree: doubles to
/// the bit, integers exactly, keys in their order. A double that is no number goes out as one of
/// the strings "NaN", "Infinity" and "-Infinity".
struct TOLV_CORE_API WriterJson {
    /// Replaces `text`, whose memory is used again.
    /// @param element the tree
    /// @param text receives the JSON
    /// @param compact true: one line without white space; false: indented for people.
    /// @throws Exception::InvalidParameter when a string is not valid UTF-8, with the path to it,
    /// or when the tree is deeper than `Limits::depth`.
    static void Write(Element const& element, std::string& text, bool compact = true);

    /// The same into a stream; nothing is written when the tree is refused.
    static void Write(Element const& element, std::ostream& stream, bool compact);
};

} // namespace Tolv::MetaData
