#pragma once

#include <string>
#include <vector>

#include <tolv/msgs/introspection/description.h>
#include <tolv/msgs/introspection/explanation.h>

/// @file
/// How a value misses the type of its field.
namespace Tolv::Msgs::Introspection::Detail {

/// What a field expected, where the value itself is of the wrong kind, out of its range or out of
/// its literals; empty when it fits. What is inside of lists and objects is not looked at.
std::optional<Problem> mismatch(FieldDescription const& field, MetaData::Element const& value,
                                std::string const& path);

/// Whether the value is one of the field's literals.
bool isLiteral(FieldDescription const& field, MetaData::Element const& value);

/// "one of ..." for people.
std::string literalsOf(FieldDescription const& field);

/// What is wrong inside of a value: with the entries of a list, the keys of an encoded array or of
/// a payload that converts itself by hand, the id of a message. Records tell by events of their
/// own.
std::vector<Problem> problemsInside(FieldDescription const& field, MetaData::Element const& value,
                                    std::string const& path);

/// What is wrong with an encoded array that reads all the same: its text decides how many elements
/// there are, whatever "len" says.
std::optional<Problem> lengthMismatch(FieldDescription const& field, MetaData::Element const& value,
                                      std::string const& path);

/// The problem of a key that has to be there.
Problem absence(std::string path);

} // namespace Tolv::Msgs::Introspection::Detail
