#include <tolv/messages.h>
#include <tolv/msgs/introspection/detail/tables.h>
#include <tolv/msgs/introspection/detail/types.h>

/// @file
/// The types that fields of this library have: the plain types, the records nested in other
/// records, and the payloads, which the tables of the families list. Payloads with custom
/// conversion list their keys.
namespace Tolv::Msgs::Introspection {

template <>
struct HandWritten<App::PingData> {
    static std::vector<FieldDescription> fields() {
        return {requiredKey<unsigned int>("MaxVersion"), requiredKey<unsigned int>("MinVersion"),
                requiredKey<unsigned int>("MessageType"), requiredKey<bool>("SupportsBinary")};
    }
};

template <>
struct HandWritten<App::SystemInfoResponseData> {
    static std::vector<FieldDescription> fields() {
        return {requiredKey<std::string>("Name"), requiredKey<std::string>("UUID"),
                requiredKey<std::string>("Description"), requiredKey<std::string>("SerialNumber")};
    }
};

template <>
struct HandWritten<App::AppLocationData> {
    static std::vector<FieldDescription> fields() {
        return {requiredKey<std::string>("AppInstallFromLocation")};
    }
};

using AttrMessages = std::vector<std::shared_ptr<Attrs::AttrMessage>>;

template <>
struct HandWritten<Attrs::ArrayDataPolymorphic<Attrs::AttrMessage>> {
    static std::vector<FieldDescription> fields() {
        return {requiredKey<AttrMessages>("Attributes")};
    }
};

template <>
struct HandWritten<Attrs::ArrayWithRangeRequestData> {
    static std::vector<FieldDescription> fields() {
        return {requiredKey<unsigned int>("StartElementIndex"),
                requiredKey<unsigned int>("NumberOfElement")};
    }
};

template <>
struct HandWritten<Attrs::ArrayWithRangeResponseData> {
    static std::vector<FieldDescription> fields() {
        return {requiredKey<AttrMessages>("Attributes"),
                requiredKey<unsigned int>("StartElementIndex")};
    }
};

namespace Detail {

namespace {

template <class... Types>
void addAll() {
    (add<Types>(), ...);
}

template <class T>
struct Payload {
    static void add() { Introspection::add<T>(); }
};

/// A list of messages of one class makes that class a field type.
template <template <class> class List, class M>
requires std::derived_from<M, Message>
struct Payload<List<M>> {
    static void add() { addAll<List<M>, M>(); }
};

#define TOLV_SIMPLE_MESSAGE(alias, number, role)
#define TOLV_DESTINATION_MESSAGE(alias, number, role)
#define TOLV_PAYLOAD_MESSAGE(alias, number, role, ...) Payload<__VA_ARGS__>::add();

void addPayloads() {
#include <tolv/msgs/app/messages.def>
#include <tolv/msgs/attrs/batches.def>
#include <tolv/msgs/attrs/messages.def>
#include <tolv/msgs/attrs/structs_messages.def>
#include <tolv/msgs/communications/messages.def>
#include <tolv/msgs/engine/messages.def>
#include <tolv/msgs/errs/messages.def>
#include <tolv/msgs/excepts/messages.def>
#include <tolv/msgs/notifs/system_messages.def>
}

#undef TOLV_SIMPLE_MESSAGE
#undef TOLV_DESTINATION_MESSAGE
#undef TOLV_PAYLOAD_MESSAGE

void addPlainTypes() {
    addAll<bool, unsigned char, unsigned short, int, unsigned int, long long, unsigned long long,
           double, std::string, std::complex<bool>, std::complex<double>, std::vector<int>,
           std::vector<std::string>, Identifier>();
    enter(typeid(ReflectedAddress), listOf<std::string>());
    addPolymorphic<Message>();
    addPolymorphic<Errs::ErrorMessage>();
}

void addStructs() {
    using namespace Structs;
    addAll<Slot, Lun, Ports, DeviceType, SensorType>();
    addAll<EKeyingEndpoint, EKeyingLink, PcieDevice, MessageKeyData, MdnsResult>();
}

void addApp() {
    using namespace App;
    addAll<QmlFileListResponseData::FileMetaData, InstalledAppData, ResourceData, HardwareModule,
           HardwareConfiguration, HardwareComponent, AppPropertiesResponseData::IconData,
           AppPropertiesResponseData::ResourceDefinition>();
}

void addAttrs() {
    using namespace Attrs;
    addAll<AttrMetaDataBase, NumericMetaData, RangedMetaData<double>, RangedMetaData<long long>,
           RangedMetaData<std::complex<double>>, NumericMeasMetaData, NumericMeasMetaDataWithStatus,
           EnumMetaData, IntVectorMetaData, StringMetaData>();
    addAll<EnumVal, TraceSegment, Engine::TransitionData::ParamList,
           Communications::Forwarder::ServiceData, Excepts::GenericExceptionData>();
}

} // namespace

void addOwnTypes() {
    addPlainTypes();
    addStructs();
    addApp();
    addAttrs();
    addPayloads();
}

} // namespace Detail

} // namespace Tolv::Msgs::Introspection
