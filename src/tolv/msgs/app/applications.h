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
    /// The application, as listed in `AppListData`.
    ReflectorArray<std::string> appId{this, "AppID"_key, Required};
    Reflector<std::string> uuid{this, "UUID"_key, Required};       ///< of the instance
    Reflector<std::string> appName{this, "AppName"_key, Required}; ///< human-readable
};

/// The result of a command, with an error report on failure.
class TOLV_MESSAGES_API ResultData : public Utils::MayContainError {
public:
    Reflector<bool> result{this, "Result"_key, Required};    ///< true on success
    Reflector<std::string> uuid{this, "UUID"_key, Required}; ///< of the instance
};

/// One installed application.
class TOLV_MESSAGES_API InstalledAppData : public MirroredObject {
public:
    Reflector<std::string> name{this, "Name"_key, Required}; ///< human-readable
    /// The id to use in `InstantiateAppCommandData`.
    Reflector<std::string> id{this, "ID"_key, Required};

    InstalledAppData() = default;
    /// An application with this name and id.
    InstalledAppData(std::string const& name, std::string const& id);
};

/// The installed applications. The list is absent if there are none.
class TOLV_MESSAGES_API InstalledAppsResponseData : public MirroredObject {
public:
    ReflectorArray<InstalledAppData> apps{this, "Apps"_key, Optional}; ///< unset if none
};

/// Starts an instance of an installed application.
class TOLV_MESSAGES_API InstantiateAppCommandData : public MirroredObject {
public:
    Reflector<std::string> name{this, "Name"_key, Required}; ///< as in `InstalledAppData`
    Reflector<std::string> id{this, "ID"_key, Required};     ///< as in `InstalledAppData`

    InstantiateAppCommandData() = default;
    /// A command for the application with this name and id.
    InstantiateAppCommandData(std::string const& name, std::string const& id);
};

/// Requests a connection to a running instance.
class TOLV_MESSAGES_API ConnectToAppCommandData : public MirroredObject {
public:
    Reflector<std::string> uuid{this, "UUID"_key, Required}; ///< of the instance

    ConnectToAppCommandData() = default;
    /// A command for the instance with this id.
    explicit ConnectToAppCommandData(std::string const& uuid);
};

/// How to connect to a running instance.
class TOLV_MESSAGES_API ConnectToAppResultData : public MirroredObject {
public:
    Reflector<int> port{this, "Port"_key, Required};         ///< on which the instance listens
    Reflector<bool> result{this, "Result"_key, Required};    ///< true on success
    Reflector<std::string> uuid{this, "UUID"_key, Required}; ///< of the instance

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
    /// Each entry identifies one application, like `AppIdData::appId`.
    ReflectorArray<std::vector<std::string>> applications{this, "Applications"_key, Required};
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
        Reflector<std::string> type{this, "Type"_key, Required, "category"}; ///< the kind of icon
        /// The icon among those of its kind.
        Reflector<std::string> image{this, "Image"_key, Required, "name"};

        IconData() = default;
        /// The icon of this kind.
        IconData(std::string const& type, std::string const& image);
    };

    /// A resource that the application requests.
    class TOLV_MESSAGES_API ResourceDefinition : public MirroredObject {
    public:
        Reflector<std::string> name{this, "Name"_key, Required}; ///< human-readable
        Reflector<std::string> id{this, "ID"_key, Required};     ///< of the requirement
        Reflector<std::string> description{this, "Description"_key, Required}; ///< human-readable
        /// Whether the application needs the resource to run.
        Reflector<bool> required{this, "Required"_key, Required, true};
        /// Ids of the resources that would satisfy the request (`ResourceData::id`).
        ReflectorArray<std::string> matchingIds{this, "MatchingIDs"_key, Required};
    };

    Reflector<std::string> name{this, "Name"_key, Required};               ///< human-readable
    Reflector<std::string> description{this, "Description"_key, Required}; ///< human-readable
    /// Shown for the application on a screen.
    Reflector<IconData> icon{this, "Icon"_key, Required};
    Reflector<std::string> version{this, "Version"_key, Required}; ///< human-readable
    /// The instrument resources that the application needs.
    ReflectorArray<ResourceDefinition> requiredResources{this, "RequiredResources"_key, Required};
};

} // namespace Tolv::Msgs::App
