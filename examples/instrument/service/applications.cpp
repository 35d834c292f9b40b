#include <algorithm>
#include <map>
#include <memory>

#include <instrument/overload_error.h>

#include "parts.h"

namespace Example {

using namespace Tolv::Msgs;
using Errs::GenericErrorData;

namespace {

/// The applications on the instrument, and their instances.
class Applications {
public:
    [[nodiscard]] App::InstalledAppsResponseData list() const {
        App::InstalledAppsResponseData list;
        list.apps = installed_;
        return list;
    }

    [[nodiscard]] App::AppPropertiesResponseData properties(App::AppIdData const& app) const {
        auto const& known = find(app.appId().at(0));
        App::AppPropertiesResponseData::ResourceDefinition input;
        input.name = "input";
        input.id = "in";
        input.description = "where the signal comes in";
        input.matchingIds = {"rf-in-1"};

        App::AppPropertiesResponseData properties;
        properties.name = known.name();
        properties.description = "Shows the spectrum of a signal";
        properties.icon = {"category", "analyzer"};
        properties.version = "2.1.0";
        properties.requiredResources = {input};
        return properties;
    }

    App::AppIdData install(std::string const& location) {
        auto const file = location.substr(location.rfind('/') + 1);
        auto const id = file.substr(0, file.find('.'));
        installed_.emplace_back("Power Meter", id);
        App::AppIdData app;
        app.appId = {id};
        app.appName = installed_.back().name();
        return app;
    }

    /// The instance, or why there is none.
    App::ResultData instantiate(App::InstantiateAppCommandData const& command) {
        auto const& app = find(command.id());
        App::ResultData result;
        auto const user = std::find_if(instances_.begin(), instances_.end(),
                                       [&](auto& instance) { return instance.second == app.id(); });
        if (user != instances_.end()) {
            result.setError({GenericErrorData::ErrorLevel::error,
                             GenericErrorData::ErrorCategory::application, 17,
                             "rf-in-1 is in use by " + app.name(), timestamp()});
        } else {
            auto const uuid =
                "00000000-0000-4000-8000-00000000000" + std::to_string(instances_.size() + 1);
            instances_[uuid] = app.id();
            result.result = true;
            result.uuid = uuid;
        }
        return result;
    }

    [[nodiscard]] App::ConnectToAppResultData way(std::string const& uuid) const {
        if (!instances_.contains(uuid))
            throw Tolv::Exception::InvalidHandle("no instance has the UUID " + uuid);
        App::ConnectToAppResultData way(5025);
        way.uuid = uuid;
        return way;
    }

private:
    [[nodiscard]] App::InstalledAppData const& find(std::string const& id) const {
        auto const app = std::find_if(installed_.begin(), installed_.end(),
                                      [&](auto& candidate) { return candidate.id() == id; });
        if (app == installed_.end())
            throw Tolv::Exception::InvalidParameter("no application has the id " + id);
        return *app;
    }

    std::vector<App::InstalledAppData> installed_{{"Spectrum Analyzer", "spectrum"},
                                                  {"Signal Generator", "generator"}};
    std::map<std::string, std::string> instances_; ///< UUID to the application's id
};

} // namespace

void offerApplications(Service& service) {
    auto const apps = std::make_shared<Applications>();

    service.on<App::InstalledAppsRequestMessage>([&service, apps](auto const&) {
        service.send(App::InstalledAppsResponseMessage(apps->list()));
    });
    service.on<App::AppPropertiesRequestMessage>([&service, apps](auto const& request) {
        service.send(App::AppPropertiesResponseMessage(apps->properties(request.payload())));
    });
    service.on<App::InstallAppMessage>([&service, apps](auto const& request) {
        auto const app = apps->install(request.payload().location());
        service.send(App::InstallAppResultMessage(app));
        service.send(Notifs::AppInstalledNotification());
    });
    service.on<App::InstantiateAppMessage>([&service, apps](auto const& request) {
        auto const result = apps->instantiate(request.payload());
        service.send(App::InstantiateAppResultMessage(result));
        if (result.result())
            service.send(Notifs::AppStartedNotification());
    });
    service.on<App::ConnectToAppMessage>([&service, apps](auto const& request) {
        service.send(App::ConnectToAppResultMessage(apps->way(request.payload().uuid())));
    });
    service.on<App::RestartAppMessage>(
        [](auto const&) { throw OverloadError("33.5 dBm at rf-in-1, which bears 30 dBm", 33.5); });
}

} // namespace Example
