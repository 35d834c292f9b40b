#include "chapters.h"

namespace Example {

using namespace Tolv::Msgs;

namespace {

App::AppIdData named(std::string const& id) {
    App::AppIdData app;
    app.appId = {id};
    return app;
}

/// Starts an instance, and gives its UUID.
std::string instantiate(Dialogue& dialogue) {
    App::InstantiateAppMessage const command({"Spectrum Analyzer", "spectrum"});

    auto const first = dialogue.ask<App::InstantiateAppResultMessage>(command);
    check("result of the first start", first->payload().result(), true);
    check("the first start has an error", first->payload().hasError(), false);
    dialogue.hearUnasked<Notifs::AppStartedNotification>();

    auto const second = dialogue.ask<App::InstantiateAppResultMessage>(command);
    check("result of the second start", second->payload().result(), false);
    // "Error" holds a whole message, which has come back as its own class.
    auto const* const error =
        dynamic_cast<Errs::GenericErrorMessage const*>(&second->payload().error());
    check("the error is a GenericErrorMessage", error != nullptr);
    auto const& report = error->payload();
    check("error number", report.errorNumber(), 17);
    check("error text", report.errorDescription(), "rf-in-1 is in use by Spectrum Analyzer");
    check("error level", report.level() == Errs::GenericErrorData::ErrorLevel::error);
    dialogue.note("error " + std::to_string(report.errorNumber()) + " at " + report.timestamp() +
                  ": " + report.errorDescription());
    return first->payload().uuid();
}

} // namespace

void applications(Dialogue& dialogue) {
    dialogue.heading("Applications: what is there, and what runs?");
    auto const list =
        dialogue.ask<App::InstalledAppsResponseMessage>(App::InstalledAppsRequestMessage());
    auto const& apps = list->payload().apps();
    check("number of applications", apps.size(), 2U);
    check("first application", apps[0].name(), "Spectrum Analyzer");
    check("id of the first application", apps[0].id(), "spectrum");

    auto const answer = dialogue.ask<App::AppPropertiesResponseMessage>(
        App::AppPropertiesRequestMessage(named("spectrum")));
    auto const& properties = answer->payload();
    check("version", properties.version(), "2.1.0");
    check("icon", properties.icon().image(), "analyzer");
    check("number of resources", properties.requiredResources().size(), 1U);
    auto const& input = properties.requiredResources()[0];
    check("the resource is required", input.required(), true);
    check("resources that serve", input.matchingIds() == std::vector<std::string>{"rf-in-1"});

    App::AppLocationData location;
    location.setLocation("file:///media/usb/powermeter.app");
    auto const installed =
        dialogue.ask<App::InstallAppResultMessage>(App::InstallAppMessage(location));
    check("id of what was installed",
          installed->payload().appId() == std::vector<std::string>{"powermeter"});
    dialogue.hearUnasked<Notifs::AppInstalledNotification>();

    auto const uuid = instantiate(dialogue);
    auto const way = dialogue.ask<App::ConnectToAppResultMessage>(
        App::ConnectToAppMessage(App::ConnectToAppCommandData(uuid)));
    check("result of the way", way->payload().result(), true);
    check("port of the instance", way->payload().port(), 5025);
    check("instance", way->payload().uuid(), uuid);
}

} // namespace Example
