#include <tolv/core/exceptions.h>
#include <tolv/msgs/structs/selftest.h>

namespace Tolv::Msgs::Structs {

namespace {

bool isTestState(int value, char const* where) {
    if (value >= Selftest::passed && value <= Selftest::notRun)
        return true;
    throw Exception::InvalidEnumValue(where + std::to_string(value));
}

} // namespace

bool SelftestData::isState(int const& value) {
    return isTestState(value, "SelftestData::state = ");
}

bool SelftestTestState::isState(int const& value) {
    return isTestState(value, "SelftestTestState::testState = ");
}

SelftestData::SelftestData(Lossless<int> id, std::string const& name, Lossless<bool> enable,
                           Selftest::TestState state, std::string const& result) {
    this->id = id;
    this->name = name;
    this->enable = enable;
    this->result = result;
    this->state.edit() = state; // bypasses the check
}

} // namespace Tolv::Msgs::Structs
