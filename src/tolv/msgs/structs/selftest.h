#pragma once

#include <string>

#include <tolv/metadata/reflector_lambda.h>
#include <tolv/msgs/record.h>

/// @file
/// How a hardware self-test is reported and controlled.
namespace Tolv::Msgs::Structs {

using MetaData::ReflectorLambda;

namespace Selftest {

/// How far a test has come and what it found. It travels as a number, and the fields that hold it
/// are numbers, with which these constants compare.
enum TestState : int { passed = 0, failed = 1, running = 2, notRun = 3 };

} // namespace Selftest

/// One test.
class TOLV_MESSAGES_API SelftestData : public MirroredObject {
    /// @throws Exception::InvalidEnumValue for a number that is no state.
    static bool isState(int const& value);

public:
    Reflector<int> id{this, "id"_key, Required, 0};              ///< which test
    Reflector<std::string> name{this, "name"_key, Required};     ///< for people
    Reflector<bool> enable{this, "enable"_key, Required, true};  ///< whether the test is run
    Reflector<std::string> result{this, "result"_key, Required}; ///< what was found, for people
    /// Assigning a number that is no `Selftest::TestState` throws Exception::InvalidEnumValue, and
    /// so does copying a record that holds one. A tree without a state, or with another number,
    /// leaves the state as it is.
    ReflectorLambda<int> state{this, "state"_key, Selftest::notRun, isState};

    SelftestData() = default;
    /// A test with all fields. The state is not checked: it is held, and written, whatever it is.
    SelftestData(Lossless<int> id, std::string const& name, Lossless<bool> enable,
                 Selftest::TestState state, std::string const& result);
    SelftestData(SelftestData const& other) : SelftestData() { *this = other; }
    SelftestData& operator=(SelftestData const&) = default;
};

/// Enables or disables a test.
class TOLV_MESSAGES_API SelftestTestEnable : public MirroredObject {
public:
    Reflector<int> testEnableId{this, "testEnableId"_key, Required, 0}; ///< which test
    Reflector<int> testEnable{this, "testEnable"_key, Required, 0}; ///< 0: disabled; else enabled

    SelftestTestEnable() = default;
    SelftestTestEnable(SelftestTestEnable const& other) : SelftestTestEnable() { *this = other; }
    SelftestTestEnable& operator=(SelftestTestEnable const&) = default;
};

/// Reports what a test found.
class TOLV_MESSAGES_API SelftestTestResult : public MirroredObject {
public:
    Reflector<int> testResultId{this, "testResultId"_key, Required, 0}; ///< which test
    /// Of the test, for people.
    Reflector<std::string> testResultName{this, "testResultName"_key, Required};
    /// What was found, for people.
    Reflector<std::string> testResult{this, "testResult"_key, Required};

    SelftestTestResult() = default;
    SelftestTestResult(SelftestTestResult const& other) : SelftestTestResult() { *this = other; }
    SelftestTestResult& operator=(SelftestTestResult const&) = default;
};

/// Reports how far a test has come.
class TOLV_MESSAGES_API SelftestTestState : public MirroredObject {
    /// @throws Exception::InvalidEnumValue for a number that is no state.
    static bool isState(int const& value);

public:
    Reflector<int> testStateId{this, "testStateId"_key, Required, 0}; ///< which test
    /// Checked as `SelftestData::state` is.
    ReflectorLambda<int> testState{this, "testState"_key, Selftest::notRun, isState};

    SelftestTestState() = default;
    SelftestTestState(SelftestTestState const& other) : SelftestTestState() { *this = other; }
    SelftestTestState& operator=(SelftestTestState const&) = default;
};

} // namespace Tolv::Msgs::Structs
