// Runs stored inputs through a fuzz target, for compilers and builds without libFuzzer.

#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

namespace {

void runFile(std::filesystem::path const& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    std::vector<char> const content{std::istreambuf_iterator<char>(file), {}};
    // A copy of exactly this size, so that a sanitizer detects reads beyond the end.
    std::vector<std::uint8_t> const bytes(content.begin(), content.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

std::size_t run(std::filesystem::path const& path) {
    if (!std::filesystem::is_directory(path)) {
        runFile(path);
        return 1;
    }
    std::size_t count = 0;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(path)) {
        if (entry.is_regular_file()) {
            runFile(entry.path());
            ++count;
        }
    }
    return count;
}

} // namespace

int main(int argc, char** argv) try {
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        count += run(argv[i]);
    }
    std::cout << "inputs run: " << count << '\n';
    // Running nothing is most likely due to a wrong path, and must not pass.
    return count > 0 ? 0 : 1;
} catch (std::exception const& e) {
    std::cerr << "error: " << e.what() << '\n';
    return 1;
}
