#include <memory>
#include <string>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/attrs/structs_messages.h>
#include <tolv/msgs/catalogue.h>

#include "support/trees.h"

namespace Tolv::Msgs::Attrs {
namespace {

using namespace Tolv::Testing;

/// The message is known under its number and alias, and travels with its payload.
template <class M, class Payload>
void expectMessage(unsigned short number, std::string const& alias) {
    SCOPED_TRACE(alias);
    auto const id = Identifier::toValue(4, 0, 0, number);
    EXPECT_EQ(static_cast<unsigned long long>(M::MsgID()), id);
    auto const* const row = findMessage(id);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->fullAlias(), "Attrs::" + alias);
    EXPECT_EQ(row, findMessage(alias)) << "no other family has this alias";

    M const sent;
    static_assert(std::is_same_v<decltype(sent.payload()), Payload const&>);
    EXPECT_EQ(written(sent.payload()), written(Payload())) << "the payload's own default";
    auto const received = Message::CreateFromMetaData(parsed(written(sent)));
    ASSERT_NE(dynamic_cast<M const*>(received.get()), nullptr);
    EXPECT_EQ(written(*received), written(sent));
}

TEST(StructsMessages, Table) {
    expectMessage<FruMessage, Structs::FruData>(24, "FruMessage");
    expectMessage<SensorMessage, Structs::SensorData>(25, "SensorMessage");
    expectMessage<EKeyingMessage, Structs::EKeyingData>(30, "EKeyingMessage");
    expectMessage<TriggerRouteMessage, Structs::TriggerRoute>(32, "TriggerRouteMessage");
    expectMessage<TriggerPulseOffsetMessage, Structs::TriggerPulseOffset>(
        33, "TriggerPulseOffsetMessage");
    expectMessage<TriggerPulseWidthMessage, Structs::TriggerPulseWidth>(34,
                                                                        "TriggerPulseWidthMessage");
    expectMessage<SelftestMessage, Structs::SelftestData>(39, "SelftestMessage");
    expectMessage<SelftestStateMessage, Structs::SelftestTestState>(40, "SelftestStateMessage");
    expectMessage<SelftestEnableMessage, Structs::SelftestTestEnable>(41, "SelftestEnableMessage");
    expectMessage<SelftestResultMessage, Structs::SelftestTestResult>(42, "SelftestResultMessage");
    expectMessage<FanBankMessage, Structs::FanBankData>(43, "FanBankMessage");
    expectMessage<VersionMessage, Structs::VersionData>(45, "VersionMessage");
    expectMessage<FilesystemSpaceMessage, Structs::FilesystemSpace>(47, "FilesystemSpaceMessage");
    expectMessage<PcieDeviceMessage, Structs::PcieDevice>(48, "PcieDeviceMessage");
    expectMessage<PcieDomainMessage, Structs::PcieDomain>(49, "PcieDomainMessage");
    expectMessage<GpsMessage, Structs::GPS>(50, "GpsMessage");
    expectMessage<WaveformSeqItemMessage, Structs::WaveformSeqItem>(55, "WaveformSeqItemMessage");
}

TEST(StructsMessages, PayloadThatIsMissingIsReset) {
    FanBankMessage message(Structs::FanBankData(3, 50));
    readInto(message.Data, "{}");
    EXPECT_FALSE(message.Data.initialized());
    EXPECT_THROW((void)message.payload(), Exception::InvalidOperation);
    EXPECT_EQ(written(message.editPayload()), R"({"bank":-1,"speed":-1})")
        << "the default of a fan bank is not zero";
}

TEST(StructsMessages, UncheckedStateCannotBecomeAPayload) {
    Structs::SelftestData const data(1, "a", true, static_cast<Structs::Selftest::TestState>(4),
                                     "");
    EXPECT_THROW(SelftestMessage{data}, Exception::InvalidEnumValue);
}

} // namespace
} // namespace Tolv::Msgs::Attrs
