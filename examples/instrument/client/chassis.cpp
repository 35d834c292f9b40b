#include <map>

#include "chapters.h"

namespace Example {

using namespace Tolv::Msgs;
using Component = App::HardwareComponent;

namespace {

using ResourcesById = std::map<std::string, App::ResourceData>;

std::string describe(Component const& component, ResourcesById const& resources) {
    static std::map<int, std::string> const words{
        {0, "blank"}, {1, "port"}, {2, "display"}, {3, "control"}};
    std::ostringstream text;
    text << words.at(component.type()) << " at " << component.position() << ", width "
         << component.width();
    if (component.resourceId.initialized()) {
        auto const& resource = resources.at(component.resourceId());
        text << ": " << resource.name() << ", "
             << (resource.inUseBy().empty() ? "free" : "used by " + resource.inUseBy());
    }
    return text.str();
}

std::string describe(App::ChassisInformation const& chassis, ResourcesById const& resources) {
    std::ostringstream text;
    text << chassis.make() << ' ' << chassis.model() << '\n';
    for (auto const& module : chassis.moduleList()) {
        auto const last = &module == &chassis.moduleList().back();
        text << (last ? "`-- " : "|-- ") << module.model();
        if (!module.configuration.initialized()) {
            text << '\n';
            continue;
        }
        auto const& configuration = module.configuration();
        text << ", front in " << configuration.divisions() << " divisions\n";
        for (auto const& component : configuration.componentList())
            text << (last ? "    " : "|   ") << "    " << describe(component, resources) << '\n';
    }
    return text.str();
}

} // namespace

void chassis(Dialogue& dialogue) {
    dialogue.heading("Chassis: what sits where, and who uses it?");
    auto const info = dialogue.ask<App::SystemInfoResponseMessage>(App::SystemInfoRequestMessage());
    check("serial number", info->payload().serialNumber(), "100007");

    ResourcesById resources;
    auto const all = dialogue.ask<App::ResourcesResponseMessage>(App::ResourcesRequestMessage());
    for (auto const& resource : all->payload().resources())
        resources[resource.id()] = resource;
    check("number of resources", resources.size(), 2U);
    check("user of the input", resources["rf-in-1"].inUseBy(), "Spectrum Analyzer");
    check("user of the output", resources["rf-out-1"].inUseBy(), "");

    auto const answer = dialogue.ask<App::ChassisInformationResponseMessage>(
        App::ChassisInformationRequestMessage());
    check("the chassis as a tree", describe(answer->payload(), resources),
          "Tolv five-slot chassis\n"
          "|-- RF analyzer, front in 4 divisions\n"
          "|       port at 0, width 1: RF input 1, used by Spectrum Analyzer\n"
          "|       display at 2, width 1\n"
          "|-- RF generator, front in 4 divisions\n"
          "|       port at 0, width 1: RF output 1, free\n"
          "|       control at 3, width 1\n"
          "`-- filler panel\n");
    dialogue.note(describe(answer->payload(), resources));
}

} // namespace Example
