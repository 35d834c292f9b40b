#include "parts.h"

namespace Example {

using namespace Tolv::Msgs;
using Component = App::HardwareComponent;
using Type = Component::HardwareComponentType;

namespace {

App::SystemInfoResponseData systemInfo() {
    App::SystemInfoResponseData info;
    info.setName("bench-7");
    info.setUuid("7d0c0f8e-51a2-4c6f-9a55-2f60b1f7c007");
    info.setDescription("Simulated instrument of the examples");
    info.setSerialNumber("100007");
    return info;
}

App::Resources resources() {
    App::Resources all;
    all.resources = {{"RF input 1", "rf-in-1", "rf-input", "slot1", "Spectrum Analyzer"},
                     {"RF output 1", "rf-out-1", "rf-output", "slot2", ""}};
    return all;
}

App::HardwareModule module(std::string const& model, int divisions,
                           std::vector<Component> const& components) {
    App::HardwareConfiguration configuration(divisions);
    configuration.componentList = components;
    App::HardwareModule module("Tolv", model);
    module.configuration = configuration;
    return module;
}

App::ChassisInformation chassis() {
    App::ChassisInformation chassis("Tolv", "five-slot chassis");
    chassis.moduleList = {
        module("RF analyzer", 4, {{Type::port, 0, 1, "rf-in-1"}, {Type::display, 2, 1}}),
        module("RF generator", 4, {{Type::port, 0, 1, "rf-out-1"}, {Type::control, 3, 1}}),
        App::HardwareModule("Tolv", "filler panel"), // nothing is known of its front
    };
    return chassis;
}

} // namespace

void offerChassis(Service& service) {
    service.on<App::SystemInfoRequestMessage>(
        [&service](auto const&) { service.send(App::SystemInfoResponseMessage(systemInfo())); });
    service.on<App::ResourcesRequestMessage>(
        [&service](auto const&) { service.send(App::ResourcesResponseMessage(resources())); });
    service.on<App::ChassisInformationRequestMessage>([&service](auto const&) {
        service.send(App::ChassisInformationResponseMessage(chassis()));
    });
}

} // namespace Example
