#pragma once

namespace Tolv::Msgs::Structs {

/// Compares two records field by field in the given order, and stops at the first difference.
/// @throws Exception::InvalidOperation if a compared field is uninitialized.
template <class Record, class... Fields>
bool sameFields(Record const& left, Record const& right, Fields Record::*... fields) {
    return (((left.*fields)() == (right.*fields)()) && ...);
}

} // namespace Tolv::Msgs::Structs
