#pragma once

#include <string>
#include <vector>

#include <tolv/msgs/introspection/description.h>
#include <tolv/msgs/introspection/explanation.h>

/// @file
/// How a value differs from the type of its field.
namespace Tolv::Msgs::Introspection::Detail {

/// What a field expected, if the value itself is of the wrong kind, out of range or not one of the
/// literals; empty if it fits. The contents of lists and objects are not checked.
std::optional<Problem> mismatch(FieldDescription const& field, MetaData::Element const& value,
                                std::string const& path);

/// Whether the value is one of the field's literals.
bool isLiteral(FieldDescription const& field, MetaData::Element const& value);

/// "one of ...", human-readable.
std::string literalsOf(FieldDescription const& field);

/// The problems inside a value: in the entries of a list, in the keys of an encoded array or of a
/// payload with custom conversion, or in the id of a message. Records report their own events.
std::vector<Problem> problemsInside(FieldDescription const& field, MetaData::Element const& value,
                                    std::string const& path);

/// The mismatch between "len" and the text of an encoded array that can be read nevertheless: the
/// text determines the number of elements, whatever "len" says.
std::optional<Problem> lengthMismatch(FieldDescription const& field, MetaData::Element const& value,
                                      std::string const& path);

/// The problem of a missing required key.
Problem absence(std::string path);

} // namespace Tolv::Msgs::Introspection::Detail
