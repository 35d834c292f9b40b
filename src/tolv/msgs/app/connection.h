#pragma once

#include <tolv/msgs/payload_interface.h>
#include <tolv/msgs/record.h>

/// @file
/// The handshake between a client and the service that hosts applications.
namespace Tolv::Msgs::App {

/// Opens a connection: the range of protocol versions that the client supports, and whether it
/// requests binary transmission.
class TOLV_MESSAGES_API Connect : public MirroredObject {
public:
    Reflector<int> maxVersion{
        this,
        field<"MaxVersion", Doc{"the highest protocol version that the client supports"},
              Example{"3"}>,
        Required, 1};
    Reflector<int> minVersion{
        this,
        field<"MinVersion", Doc{"the lowest protocol version that the client supports"},
              Example{"1"}>,
        Required, 1};
    Reflector<bool> binaryTransmission{
        this, field<"BinaryTransmission", Doc{"whether the client requests binary transmission"}>,
        Required, true};

    Connect() = default;
    /// A request with all fields.
    Connect(Lossless<int> maxVersion, Lossless<int> minVersion, Lossless<bool> binaryTransmission);
};

/// Answers `Connect`: the range of versions that the service supports, the version that both sides
/// will use, and the form of transmission.
class TOLV_MESSAGES_API Connected : public MirroredObject {
public:
    Reflector<int> maxVersion{
        this,
        field<"MaxVersion", Doc{"the highest protocol version that the service supports"},
              Example{"3"}>,
        Required, 1};
    Reflector<int> minVersion{
        this,
        field<"MinVersion", Doc{"the lowest protocol version that the service supports"},
              Example{"1"}>,
        Required, 1};
    Reflector<int> versionToUse{
        this,
        field<"VersionToUse", Doc{"the protocol version that both sides use from now on"},
              Example{"3"}>,
        Required, 1};
    Reflector<bool> binaryTransmission{
        this,
        field<"BinaryTransmission", Doc{"whether both sides use binary transmission from now on"}>,
        Required, true};

    Connected() = default;
    /// An answer with all fields.
    Connected(Lossless<int> maxVersion, Lossless<int> minVersion, Lossless<int> versionToUse,
              Lossless<bool> binaryTransmission);
};

/// Answers a ping: the peer's version range, a message type number and whether it supports binary
/// transmission. Reading requires all four keys.
class TOLV_MESSAGES_API PingData : public SerializablePayloadInterface {
public:
    /// The highest protocol version that the peer supports.
    [[nodiscard]] unsigned int maxVersion() const noexcept { return maxVersion_; }
    /// The lowest protocol version that the peer supports.
    [[nodiscard]] unsigned int minVersion() const noexcept { return minVersion_; }
    /// A number whose meaning the peers define.
    [[nodiscard]] unsigned int messageType() const noexcept { return messageType_; }
    /// Whether the peer supports binary transmission.
    [[nodiscard]] bool supportsBinary() const noexcept { return supportsBinary_; }

    /// Sets the value returned by `maxVersion`.
    void setMaxVersion(Lossless<unsigned int> version) noexcept { maxVersion_ = version.get(); }
    /// Sets the value returned by `minVersion`.
    void setMinVersion(Lossless<unsigned int> version) noexcept { minVersion_ = version.get(); }
    /// Sets the value returned by `messageType`.
    void setMessageType(Lossless<unsigned int> type) noexcept { messageType_ = type.get(); }
    /// Sets the value returned by `supportsBinary`.
    void setSupportsBinary(Lossless<bool> supports) noexcept { supportsBinary_ = supports.get(); }

    /// The keys, for descriptions.
    static std::vector<MetaData::FieldInfo const*> mirroredKeys();

    void copyToMetaData(MetaData::Element& element) const override;
    /// @throws Exception::InvalidParameter at the first key that is missing or whose value does not
    /// fit; the members before it then have their new values.
    void copyFromMetaData(MetaData::Element const& element) override;

private:
    unsigned int maxVersion_ = 0;
    unsigned int minVersion_ = 0;
    unsigned int messageType_ = 0;
    bool supportsBinary_ = false;
};

} // namespace Tolv::Msgs::App
