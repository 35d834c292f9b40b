#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <tolv/core/metadata/element.h>
#include <tolv/core/msgs/message.h>

/// @file
/// What typed messages provide beyond their trees: whether an attribute is valid, its description
/// in words, and nested messages.
namespace Tolv::Tool {

/// The result of a payload's own `validate`.
struct Verdict {
    bool valid;
    std::string reason; ///< why it is not valid
};

/// Empty if the payload of the message has no `validate`. Does not throw because of the content of
/// the message: an unset value or an invalid regular expression is just another reason.
std::optional<Verdict> verdictOf(Msgs::Message const& message);

/// The description of an attribute in words.
struct Reading {
    std::vector<std::pair<std::string, std::string>> lines; ///< label and text
    MetaData::Element rest; ///< the part of the payload's tree that the lines do not cover
};

/// Empty if the message is not an attribute, or its payload did not parse.
/// @param data the tree that the payload writes
std::optional<Reading> readingOf(Msgs::Message const& message, MetaData::Element const& data);

/// The messages that the payload lists, in order. They are valid until `message` is modified.
std::vector<Msgs::Message const*> messagesInside(Msgs::Message const& message);

/// The verdict on a nested message.
struct InnerVerdict {
    std::string path; ///< "Data.Attributes[3]"
    Verdict verdict;
};

/// The verdicts on all messages nested in `message`, at any depth.
std::vector<InnerVerdict> verdictsInside(Msgs::Message const& message);

} // namespace Tolv::Tool
