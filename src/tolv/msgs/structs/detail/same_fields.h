#pragma once

namespace Tolv::Msgs::Structs {

/// Compares two records field by field in the order given, and stops at the first difference.
/// @throws Exception::InvalidOperation when a field that is looked at is uninitialized.
template <class Record, class... Fields>
bool sameFields(Record const& left, Record const& right, Fields Record::*... fields) {
    return (((left.*fields)() == (right.*fields)()) && ...);
}

} // namespace Tolv::Msgs::Structs
