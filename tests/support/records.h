#pragma once

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <tolv/core/metadata/mirrored_object.h>

#include "support/captured_output.h"
#include "support/trees.h"

namespace Tolv::Testing {

/// `object` with `value` in the place of the child of `key`; without the key when it is null.
inline MetaData::Element withChild(MetaData::Element const& object, std::string_view key,
                                   MetaData::Element const* value) {
    MetaData::Element changed;
    changed.makeObject(0);
    for (auto const& member : object.object()) {
        auto const isIt = member.key() == key;
        if (!isIt)
            changed[std::string(member.key())] = member.value;
        else if (value != nullptr)
            changed[std::string(key)] = *value;
    }
    return changed;
}

/// How a record takes a tree that lacks one key, or has null there: the field alone is concerned.
/// @param checked the key of a field that asks before it takes a value, and so keeps what it had
template <class Record>
void expectFieldsReadAlone(MetaData::Element const& fresh, MetaData::Element const& full,
                           std::string_view checked) {
    constexpr auto line =
        "Exception MetaDat::ReflectorArray Should have gotten an Array, but didn't\n";
    for (auto const& member : full.object()) {
        SCOPED_TRACE(std::string(member.key()));
        CapturedOutput const output;
        Record record;
        auto const lacking = withChild(full, member.key(), nullptr);
        record.copyFromMetaData(lacking);
        auto const* const had = fresh.find(std::string(member.key()));
        auto const isChecked = member.key() == checked;
        EXPECT_EQ(written(record),
                  textOf(withChild(full, member.key(), isChecked ? had : nullptr)));
        EXPECT_EQ(output.text(), "");

        if (member.value.isObject())
            continue; // what null does to a record depends on the record
        MetaData::Element const null;
        Record other;
        other.copyFromMetaData(withChild(full, member.key(), &null));
        // A list keeps what it had, a value goes.
        auto const isList = member.value.isArray();
        EXPECT_EQ(written(other),
                  textOf(withChild(full, member.key(), isList || isChecked ? had : nullptr)));
        EXPECT_EQ(output.text(), isList ? line : "");
    }
}

/// Checks keys, their order, types and defaults of a record, and that copies are on their own.
/// @param fresh what a record writes right after construction
/// @param full a text with all keys, in which no field has its default
/// @param checked as for `expectFieldsReadAlone`
template <class Record>
void expectTexts(std::string_view fresh, std::string_view full, std::string_view checked = {}) {
    SCOPED_TRACE(full);
    Record record;
    EXPECT_EQ(written(record), fresh);
    readInto(record, full);
    EXPECT_EQ(written(record), full);
    Record copy(record);
    EXPECT_EQ(written(copy), full);
    copy = Record();
    EXPECT_EQ(written(copy), fresh);
    EXPECT_EQ(written(record), full);
    if constexpr (std::is_base_of_v<MetaData::MirroredObject, Record>) {
        EXPECT_EQ(record.members().size(), parsed(full).object().size());
        expectFieldsReadAlone<Record>(parsed(fresh), parsed(full), checked);
    }
}

} // namespace Tolv::Testing
