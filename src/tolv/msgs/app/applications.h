#pragma once

#include <concepts>
#include <string>
#include <utility>
#include <vector>

#include <tolv/msgs/payload_interface.h>
#include <tolv/msgs/record.h>
#include <tolv/msgs/utils/may_contain_error.h>

/// @file
/// The records with which a client lists the applications on an instrument, reads their properties,
/// installs one, starts it and connects to the running instance. Any string and any number is
/// accepted.
namespace Tolv::Msgs::App {

/// Identifies one application.
class TOLV_MESSAGES_API AppIdData : public MirroredObject {
public:
    ReflectorArray<std::string> appId{
        this,
        field<"AppID", Doc{"the strings that identify the application, in terms of the instrument"},
              Example{R"(["spectrum"])"}>,
        Required};
    Reflector<std::string> uuid{this,
                                field<"UUID", Doc{"the id of the instance"},
                                      Example{"3f2b8c1e-7d54-4a1b-9c0e-5a6d7e8f9012"}>,
                                Required};
    Reflector<std::string> appName{
        this,
        field<"AppName", Doc{"the name of the identified application, for people"},
              Example{"Spectrum Analyzer"}>,
        Required};
};

/// The result of a command, with an error report on failure.
class TOLV_MESSAGES_API ResultData : public Utils::MayContainError {
public:
    Reflector<bool> result{
        this, field<"Result", Doc{"whether the command succeeded"}, Example{"true"}>, Required};
    Reflector<std::string> uuid{this,
                                field<"UUID", Doc{"the id of the instance"},
                                      Example{"3f2b8c1e-7d54-4a1b-9c0e-5a6d7e8f9012"}>,
                                Required};
};

/// One installed application.
class TOLV_MESSAGES_API InstalledAppData : public MirroredObject {
public:
    Reflector<std::string> name{
        this,
        field<"Name", Doc{"the name of the application, for people"}, Example{"Spectrum Analyzer"}>,
        Required};
    Reflector<std::string> id{
        this, field<"ID", Doc{"the id of the installed application"}, Example{"spectrum"}>,
        Required};

    InstalledAppData() = default;
    /// An application with this name and id.
    InstalledAppData(std::string const& name, std::string const& id);
};

/// The installed applications. The list is absent if there are none.
class TOLV_MESSAGES_API InstalledAppsResponseData : public MirroredObject {
public:
    ReflectorArray<InstalledAppData> apps{
        this, field<"Apps", Doc{"the installed applications; there are none if absent"}>, Optional};
};

/// Starts an instance of an installed application.
class TOLV_MESSAGES_API InstantiateAppCommandData : public MirroredObject {
public:
    Reflector<std::string> name{
        this,
        field<"Name", Doc{"the name of the application, as listed"}, Example{"Spectrum Analyzer"}>,
        Required};
    Reflector<std::string> id{
        this, field<"ID", Doc{"the id of the application, as listed"}, Example{"spectrum"}>,
        Required};

    InstantiateAppCommandData() = default;
    /// A command for the application with this name and id.
    InstantiateAppCommandData(std::string const& name, std::string const& id);
};

/// Requests a connection to a running instance.
class TOLV_MESSAGES_API ConnectToAppCommandData : public MirroredObject {
public:
    Reflector<std::string> uuid{this,
                                field<"UUID", Doc{"the id of the instance to connect to"},
                                      Example{"3f2b8c1e-7d54-4a1b-9c0e-5a6d7e8f9012"}>,
                                Required};

    ConnectToAppCommandData() = default;
    /// A command for the instance with this id.
    explicit ConnectToAppCommandData(std::string const& uuid);
};

/// How to connect to a running instance.
class TOLV_MESSAGES_API ConnectToAppResultData : public MirroredObject {
public:
    Reflector<int> port{
        this, field<"Port", Doc{"the port on which the instance listens"}, Example{"5025"}>,
        Required};
    Reflector<bool> result{
        this, field<"Result", Doc{"whether the client may connect"}, Example{"true"}>, Required};
    Reflector<std::string> uuid{this,
                                field<"UUID", Doc{"the id of the instance"},
                                      Example{"3f2b8c1e-7d54-4a1b-9c0e-5a6d7e8f9012"}>,
                                Required};

    ConnectToAppResultData() = default;
    /// A result with a port and no id.
    ConnectToAppResultData(Lossless<bool> result, Lossless<int> port);
    /// A result without a port.
    template <std::same_as<bool> Bool>
    explicit ConnectToAppResultData(Bool result) : ConnectToAppResultData(result, 0) {}
    /// Success, with this port.
    explicit ConnectToAppResultData(Lossless<int> port) : ConnectToAppResultData(true, port) {}
};

/// The application list: one list of strings per application.
class TOLV_MESSAGES_API AppListData : public MirroredObject {
public:
    ReflectorArray<std::vector<std::string>> applications{
        this,
        field<"Applications",
              Doc{"one list of strings per application; the instrument defines them"},
              Example{R"([["spectrum"]])"}>,
        Required};
};

/// Installs an application from a location. Reading requires the key.
class TOLV_MESSAGES_API AppLocationData : public SerializablePayloadInterface {
public:
    /// The location of the application, in the instrument's format.
    [[nodiscard]] std::string const& location() const& noexcept { return location_; }
    [[nodiscard]] std::string location() && noexcept { return std::move(location_); }
    /// Sets the value returned by `location`.
    void setLocation(std::string const& location) { location_ = location; }

    /// The keys, for descriptions.
    static std::vector<MetaData::FieldInfo const*> mirroredKeys();

    void copyToMetaData(MetaData::Element& element) const override;
    /// @throws Exception::InvalidParameter if the key is missing or its value is not a string.
    void copyFromMetaData(MetaData::Element const& element) override;

private:
    std::string location_;
};

/// The properties of an application.
class TOLV_MESSAGES_API AppPropertiesResponseData : public MirroredObject {
public:
    /// The icon of an application.
    class TOLV_MESSAGES_API IconData : public MirroredObject {
    public:
        Reflector<std::string> type{this,
                                    field<"Type", Doc{"the kind of icon"}, Example{"category"}>,
                                    Required, "category"};
        Reflector<std::string> image{
            this,
            field<"Image", Doc{"the name of the icon among those of its kind"}, Example{"name"}>,
            Required, "name"};

        IconData() = default;
        /// The icon of this kind.
        IconData(std::string const& type, std::string const& image);
    };

    /// A resource that the application requests.
    class TOLV_MESSAGES_API ResourceDefinition : public MirroredObject {
    public:
        Reflector<std::string> name{
            this,
            field<"Name", Doc{"the name of the required resource, for people"},
                  Example{"Receiver"}>,
            Required};
        Reflector<std::string> id{
            this, field<"ID", Doc{"the id of the requirement"}, Example{"receiver"}>, Required};
        Reflector<std::string> description{
            this,
            field<"Description", Doc{"what the resource is required for, for people"},
                  Example{"Receives the signal"}>,
            Required};
        Reflector<bool> required{
            this,
            field<"Required", Doc{"whether the application needs the resource to run"},
                  Example{"true"}>,
            Required, true};
        ReflectorArray<std::string> matchingIds{
            this,
            field<"MatchingIDs", Doc{"the ids of the resources that satisfy the requirement"},
                  Example{R"(["rx1"])"}>,
            Required};
    };

    Reflector<std::string> name{
        this,
        field<"Name", Doc{"the name of the application, for people"}, Example{"Spectrum Analyzer"}>,
        Required};
    Reflector<std::string> description{
        this,
        field<"Description", Doc{"a description of the application, for people"},
              Example{"Measures spectra"}>,
        Required};
    Reflector<IconData> icon{
        this, field<"Icon", Doc{"the icon that represents the application on a screen"}>, Required};
    Reflector<std::string> version{
        this, field<"Version", Doc{"the version of the application, for people"}, Example{"1.2.0"}>,
        Required};
    ReflectorArray<ResourceDefinition> requiredResources{
        this, field<"RequiredResources", Doc{"the resources that the application requests"}>,
        Required};
};

} // namespace Tolv::Msgs::App
