#pragma once

#include <string>
#include <string_view>

#include <tolv/core/metadata/json.h>
#include <tolv/core/metadata/mirrored_object.h>

namespace Tolv::Testing {

/// The tree of a JSON text.
inline MetaData::Element parsed(std::string_view text) {
    MetaData::Element element;
    MetaData::ReaderJson::Read(element, text);
    return element;
}

/// A tree as one line of JSON.
inline std::string textOf(MetaData::Element const& element) {
    std::string text;
    MetaData::WriterJson::Write(element, text);
    return text;
}

/// What `object`, a record or a field, writes into an empty tree, as one line of JSON; "null" if it
/// writes nothing.
template <class T>
std::string written(T const& object) {
    MetaData::Element element;
    object.copyToMetaData(element);
    return textOf(element);
}

/// Reads `object`, a record or a field, from a JSON text.
template <class T>
void readInto(T& object, std::string_view text) {
    object.copyFromMetaData(parsed(text));
}

/// Keeps a copy of the tree from which it is read, to compare the trees of `copyFromText` and
/// `ReaderJson::Read`.
class Taken : public MetaData::MirroredObject {
public:
    MetaData::Element tree;

    void copyToMetaData(MetaData::Element& element) const override { element = tree; }
    void copyFromMetaData(MetaData::Element const& element) override { tree = element; }
};

/// The text of the exception of class `Expected` that `call` throws; "nothing thrown" if there is
/// none. Any other exception propagates and fails the test.
template <class Expected, class Call>
std::string thrownBy(Call&& call) {
    try {
        call();
    } catch (Expected const& exception) {
        return exception.what();
    }
    return "nothing thrown";
}

} // namespace Tolv::Testing
