#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/attrs/messages.h>

#include "support/trees.h"

namespace Tolv::Msgs {
namespace {

using namespace Attrs;
using Testing::readInto;
using Testing::written;

auto const familyId = Identifier::toValue(4, 0, 0, 65535);

TEST(AttrInfo, TypesHaveTexts) { // those that golden/catalogue.txt lists
    for (auto const& [literal, id] : messageTypeMapper) {
        EXPECT_EQ(messageTypeMapper.literal(id), literal);
        AttrInfoData const info{id};
        AttrInfoData set;
        set.setTypes(literal);
        for (auto const* const data : {&info, &std::as_const(set)}) {
            EXPECT_EQ(data->scaType(), literal);
            EXPECT_EQ(data->type(), id);
        }
    }
    EXPECT_THROW((void)messageTypeMapper.value("Unknown"), Exception::InvalidEnumLiteral);
    EXPECT_EQ(messageTypeMapper.defaultLiteral(), "Unknown");
    EXPECT_EQ(messageTypeMapper.defaultValue(), familyId);
}

TEST(AttrInfo, WhatHasNoText) {
    EXPECT_EQ(written(AttrInfoData()),
              R"({"ScaName":"","ScaType":"Unknown","Type":1125899906908159})");
    AttrInfoData info(ComplexMessage::MsgID());
    EXPECT_EQ(info.scaType(), "Unknown");
    EXPECT_EQ(info.type(), Identifier::toValue(4, 0, 0, 54));
    // A message gives the id of the family, not its own.
    DoubleMessage const message;
    EXPECT_EQ(AttrInfoData(message).type(), familyId);
    EXPECT_EQ(AttrInfoData(message.id()).scaType(), "double");

    info.setTypes("Double");
    EXPECT_EQ(info.scaType(), "Double");
    EXPECT_EQ(info.type(), familyId);
    info.scaType.reset();
    info.type.reset();
    info.setTypes("");
    EXPECT_EQ(written(info), R"({"ScaName":"","ScaType":"","Type":1125899906908159})");
}

TEST(AttrArrays, OfOneClass) {
    using Infos = ArrayDataConcrete<AttrInfoMessage>;
    EXPECT_EQ(written(Infos()), R"({"Attributes":[],"AttrType":14})");
    Infos infos;
    infos.attributes.edit().emplace_back();
    infos.attributes.edit().back().editPayload().scaName = std::string("gain");
    auto const text = written(infos);
    EXPECT_EQ(text,
              R"({"Attributes":[{"MessageID":1125899906842638,"Data":)"
              R"({"ScaName":"gain","ScaType":"Unknown","Type":1125899906908159}}],"AttrType":14})");
    Infos read;
    readInto(read, text);
    EXPECT_EQ(written(Infos(read)), text);
}

/// A class whose id has sub-fields, so that their keys are always written.
class Sub : public AttrMessage {
public:
    static Identifier const& MsgID() {
        static Identifier const id(Identifier::toValue(4, 1, 2, 3));
        return id;
    }
    Sub() : AttrMessage(static_cast<unsigned long long>(MsgID()), {}, {}) {}
    Sub(Sub const&) = default;
    Sub& operator=(Sub const&) = default;
};

TEST(AttrArrays, OfAClassWithSubFields) {
    EXPECT_EQ(written(ArrayDataConcrete<Sub>()),
              R"({"Attributes":[],"AttrType":3,"AttrSub1":1,"AttrSub2":2})");
    EXPECT_TRUE(ArrayDataConcrete<Sub>().attrSub1.isRequired());
}

TEST(AttrArrays, OfAnyClasses) {
    ArrayDataPolymorphic<AttrMessage> list;
    EXPECT_EQ(written(list), R"({"Attributes":[]})");
    list.attributes.push_back(std::make_shared<DoubleMessage>(2.5));
    list.attributes.push_back(std::make_shared<BoolMessage>(false));
    list.attributes.push_back(std::make_shared<AttrInfoRequestMessage>());
    auto const text = written(list);

    ArrayDataPolymorphic<AttrMessage> read;
    read.attributes.push_back(std::make_shared<DoubleMessage>(1.0));
    readInto(read, text);
    ASSERT_EQ(read.attributes.size(), 3U);
    EXPECT_EQ(dynamic_cast<DoubleMessage&>(*read.attributes[0]).payload().value(), 2.5);
    EXPECT_EQ(dynamic_cast<BoolMessage&>(*read.attributes[1]).payload().value(), false);
    EXPECT_NE(dynamic_cast<AttrInfoRequestMessage*>(read.attributes[2].get()), nullptr);
    EXPECT_EQ(written(ArrayDataPolymorphic<AttrMessage>(read)), text);
    // Earlier content of the tree is removed.
    auto tree = Testing::parsed(R"({"Attributes":[1,2,3,4]})");
    read.copyToMetaData(tree);
    EXPECT_EQ(Testing::textOf(tree), text);

    list.attributes.push_back(nullptr);
    EXPECT_THROW(written(list), Exception::InvalidOperation);
}

TEST(AttrArrays, AReadReleasesTheMessagesOnceThereIsAList) {
    struct {
        char const* text;
        bool isArray;
        char const* why;
    } const rows[] = {
        {R"({})", false, "no list"},
        {R"({"Attributes":{}})", false, "no array"},
        {R"({"Attributes":[1]})", true, "no message"},
        {R"({"Attributes":[{}]})", true, "no id"},
        {R"({"Attributes":[{"MessageID":1125899906842629}]})", true,
         "4, 0, 0, 5 is not registered"},
        {R"({"Attributes":[{"MessageID":1125899906842637},{"MessageID":844424930131970}]})", true,
         "3, 0, 0, 2 is no attribute"},
    };
    for (auto const& row : rows) {
        ArrayWithRangeResponseData list;
        list.attributes.push_back(std::make_shared<DoubleMessage>(2.5));
        std::weak_ptr<AttrMessage> const held = list.attributes.front();
        if (row.isArray)
            EXPECT_THROW(readInto(list, row.text), Exception::InvalidOperation) << row.why;
        else
            EXPECT_THROW(readInto(list, row.text), Exception::InvalidParameter) << row.why;
        EXPECT_EQ(held.expired(), row.isArray) << row.why;
        EXPECT_EQ(list.attributes.empty(), row.isArray) << row.why;
    }
    // As the payload of a message, it is reset.
    auto const message = Message::CreateFromMetaData(Testing::parsed(
        R"({"MessageID":1125899906842645,"Data":{"Attributes":[{"MessageID":1125899906842629}]}})"));
    EXPECT_FALSE(dynamic_cast<AttrListMessage&>(*message).Data.initialized());
}

TEST(AttrArrays, Ranges) {
    ArrayWithRangeRequestData request;
    request.setOffset(4294967295U);
    request.setNumber(7);
    EXPECT_EQ(written(request), R"({"StartElementIndex":4294967295,"NumberOfElement":7})");
    EXPECT_EQ(request.offset(), 4294967295U);
    EXPECT_EQ(request.number(), 7U);
    for (auto const* const text : {R"({"StartElementIndex":-1,"NumberOfElement":1})",
                                   R"({"StartElementIndex":4294967296,"NumberOfElement":1})"})
        EXPECT_THROW(readInto(request, text), Exception::InvalidParameter) << text;
    ArrayWithRangeResponseData response;
    response.setOffset(5);
    EXPECT_EQ(written(response), R"({"Attributes":[],"StartElementIndex":5})");
}

} // namespace
} // namespace Tolv::Msgs
