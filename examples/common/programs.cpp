#include <common/programs.h>

#include <filesystem>
#include <fstream>
#include <iostream>

#include <CLI/CLI.hpp>

namespace Example {

namespace {

/// What both kinds of programs take from the command line.
struct Arguments : CLI::App {
    explicit Arguments(std::string const& program) : App("", program) {
        add_option("socket", path, "path of the Unix domain socket")->required();
        add_option("--deadline", seconds, "after which to give up")->capture_default_str();
    }
    [[nodiscard]] Clock::time_point deadline() const {
        return Clock::now() + std::chrono::seconds(seconds);
    }

    std::string path;
    int seconds = 20;
};

int fail(std::string const& program, std::string const& why) {
    std::cout.flush();
    std::cerr << program << ": " << why << '\n';
    return 1;
}

} // namespace

int serve(int argc, char** argv, std::function<void(Service&)> const& offer) {
    auto const program = std::filesystem::path(argv[0]).filename().string();
    Arguments arguments(program);
    CLI11_PARSE(arguments, argc, argv);
    try {
        Service service(LineConnection::accept(arguments.path, arguments.deadline()));
        offer(service);
        service.run();
        return 0;
    } catch (std::exception const& error) {
        return fail(program, error.what());
    }
}

int converse(int argc, char** argv, std::function<void(Dialogue&)> const& work) {
    auto const program = std::filesystem::path(argv[0]).filename().string();
    Arguments arguments(program);
    std::string logPath;
    int pace = 0;
    arguments.add_option("--log", logPath, "takes all messages, one JSON text a line");
    arguments.add_option("--pace", pace, "milliseconds to pause before each request");
    CLI11_PARSE(arguments, argc, argv);
    try {
        std::ofstream log; // outlives the connection
        Dialogue dialogue(LineConnection::connect(arguments.path, arguments.deadline()),
                          std::chrono::milliseconds(pace));
        if (!logPath.empty()) {
            log.exceptions(std::ios::failbit | std::ios::badbit);
            log.open(logPath);
            dialogue.connection().logTo(log);
        }
        work(dialogue);
        dialogue.finish();
        dialogue.heading("Summary: what crossed, both ways");
        std::cout << dialogue.connection().traffic();
        return std::cout.flush() ? 0 : fail(program, "the standard output cannot be written");
    } catch (std::exception const& error) {
        return fail(program, error.what());
    }
}

} // namespace Example
