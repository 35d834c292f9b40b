#pragma once

#include <string>
#include <utility>

#include <tolv/msgs/payload_interface.h>
#include <tolv/msgs/record.h>

/// @file
/// The instrument as a client sees it: its identity, its resources and their users, and the chassis
/// with its modules and their components.
namespace Tolv::Msgs::App {

/// The identity of the system. Reading requires all four keys.
class TOLV_MESSAGES_API SystemInfoResponseData : public SerializablePayloadInterface {
public:
    /// The human-readable name of the system.
    [[nodiscard]] std::string const& name() const& noexcept { return name_; }
    [[nodiscard]] std::string name() && noexcept { return std::move(name_); }
    /// The id of the system.
    [[nodiscard]] std::string const& uuid() const& noexcept { return uuid_; }
    [[nodiscard]] std::string uuid() && noexcept { return std::move(uuid_); }
    /// The human-readable description of the system.
    [[nodiscard]] std::string const& description() const& noexcept { return description_; }
    [[nodiscard]] std::string description() && noexcept { return std::move(description_); }
    /// The serial number of the system.
    [[nodiscard]] std::string const& serialNumber() const& noexcept { return serialNumber_; }
    [[nodiscard]] std::string serialNumber() && noexcept { return std::move(serialNumber_); }

    /// Sets the value returned by `name`.
    void setName(std::string const& name) { name_ = name; }
    /// Sets the value returned by `uuid`.
    void setUuid(std::string const& uuid) { uuid_ = uuid; }
    /// Sets the value returned by `description`.
    void setDescription(std::string const& description) { description_ = description; }
    /// Sets the value returned by `serialNumber`.
    void setSerialNumber(std::string const& serialNumber) { serialNumber_ = serialNumber; }

    /// The keys, for descriptions.
    static std::vector<MetaData::FieldInfo const*> mirroredKeys();

    void copyToMetaData(MetaData::Element& element) const override;
    /// @throws Exception::InvalidParameter at the first key that is missing or whose value is not a
    /// string; the members before it then have their new values.
    void copyFromMetaData(MetaData::Element const& element) override;

private:
    std::string name_;
    std::string uuid_;
    std::string description_;
    std::string serialNumber_;
};

/// One resource of the instrument.
class TOLV_MESSAGES_API ResourceData : public MirroredObject {
public:
    Reflector<std::string> name{
        this, field<"Name", Doc{"the name of the resource, for people"}, Example{"Receiver 1"}>,
        Required};
    Reflector<std::string> id{
        this,
        field<"ID", Doc{"the id of the resource, by which others refer to it"}, Example{"rx1"}>,
        Required};
    Reflector<std::string> type{
        this,
        field<"Type", Doc{"the kind of resource, in terms of the instrument"}, Example{"receiver"}>,
        Required};
    Reflector<std::string> position{
        this,
        field<"Position", Doc{"where the resource is, in terms of the instrument"},
              Example{"slot2"}>,
        Required};
    Reflector<std::string> inUseBy{
        this,
        field<"InUseBy", Doc{"the user of the resource; empty if the resource is free"},
              Example{"spectrum"}>,
        Required};

    ResourceData() = default;
    /// A resource with all fields.
    ResourceData(std::string name, std::string id, std::string type, std::string position,
                 std::string inUseBy);
};

/// All resources.
class TOLV_MESSAGES_API Resources : public MirroredObject {
public:
    ReflectorArray<ResourceData> resources{
        this, field<"Resources", Doc{"all resources of the instrument, in no particular order"}>,
        Required};
};

/// One component on a module.
class TOLV_MESSAGES_API HardwareComponent : public MirroredObject {
public:
    /// The kind of component. A number outside the enumeration is kept when read.
    enum class HardwareComponentType : int {
        blank = 0,   ///< a blank part of the front panel
        port = 1,    ///< a connector, possibly with a resource
        display = 2, ///< a lamp or a screen
        control = 3  ///< a switch or a button
    };

    Reflector<int> type{this,
                        field<"Type", Words{"0 blank | 1 port | 2 display | 3 control"},
                              Doc{"the kind of component"}, Example{"1"}>,
                        Required, 1};
    Reflector<int> position{
        this,
        field<"Position", Doc{"where the component is on the panel, in units of the instrument"},
              Example{"4"}>,
        Required};
    Reflector<int> width{
        this,
        field<"Width", Doc{"the width of the component, in units of the instrument"}, Example{"2"}>,
        Required};
    Reflector<std::string> resourceId{
        this,
        field<"ResourceID", Doc{"the id of the resource behind the component; none if absent"},
              Example{"rx1"}>,
        Optional};

    HardwareComponent() = default;
    /// A component without a resource.
    HardwareComponent(HardwareComponentType type, Lossless<int> position, Lossless<int> width);
    /// A component that represents a resource.
    HardwareComponent(HardwareComponentType type, Lossless<int> position, Lossless<int> width,
                      std::string resourceId);
};

/// The divisions of a module's front panel, and the components on it.
class TOLV_MESSAGES_API HardwareConfiguration : public MirroredObject {
public:
    Reflector<int> divisions{
        this,
        field<"Divisions", Doc{"the number of parts into which the front panel is divided"},
              Example{"12"}>,
        Required};
    ReflectorArray<HardwareComponent> componentList{
        this, field<"ComponentList", Doc{"the components on the front panel"}>, Required};

    HardwareConfiguration() = default;
    /// A front panel without components.
    explicit HardwareConfiguration(Lossless<int> divisions);
};

/// One module.
class TOLV_MESSAGES_API HardwareModule : public MirroredObject {
public:
    Reflector<std::string> make{
        this, field<"Make", Doc{"the manufacturer of the module"}, Example{"Example Instruments"}>,
        Required};
    Reflector<std::string> model{
        this,
        field<"Model", Doc{"the name that the manufacturer gives to the model of the module"},
              Example{"RX-200"}>,
        Required};
    Reflector<HardwareConfiguration> configuration{
        this, field<"Configuration", Doc{"the front panel of the module; unknown if absent"}>,
        Optional};

    HardwareModule() = default;
    /// A module of unknown configuration.
    HardwareModule(std::string make, std::string model);
};

/// The chassis.
class TOLV_MESSAGES_API ChassisInformation : public MirroredObject {
public:
    Reflector<std::string> make{
        this, field<"Make", Doc{"the manufacturer of the chassis"}, Example{"Example Instruments"}>,
        Required};
    Reflector<std::string> model{
        this,
        field<"Model", Doc{"the name that the manufacturer gives to the model of the chassis"},
              Example{"CH-5"}>,
        Required};
    ReflectorArray<HardwareModule> moduleList{
        this, field<"ModuleList", Doc{"the modules in the chassis; unknown if absent"}>, Optional};

    ChassisInformation() = default;
    /// A chassis without a module list.
    ChassisInformation(std::string make, std::string model);
};

} // namespace Tolv::Msgs::App
