#pragma once

#include <string>

#include <tolv/fields/reflector_lambda.h>
#include <tolv/msgs/record.h>

/// @file
/// Reporting and control of hardware self-tests.
namespace Tolv::Msgs::Structs {

using MetaData::ReflectorLambda;

namespace Selftest {

/// The state and outcome of a test. It is written as a number; the fields that hold it are
/// integers, which can be compared with these constants.
enum TestState : int { passed = 0, failed = 1, running = 2, notRun = 3 };

} // namespace Selftest

/// One test.
class TOLV_MESSAGES_API SelftestData : public MirroredObject {
    /// @throws Exception::InvalidEnumValue if `value` is not a `Selftest::TestState`.
    static bool isState(int const& value);

public:
    Reflector<int> id{this, field<"id", Doc{"the number of the test"}, Example{"7"}>, Required, 0};
    Reflector<std::string> name{
        this, field<"name", Doc{"the human-readable name of the test"}, Example{"Reference clock"}>,
        Required};
    Reflector<bool> enable{this, field<"enable", Doc{"whether the test is run"}, Example{"true"}>,
                           Required, true};
    Reflector<std::string> result{this,
                                  field<"result", Doc{"the human-readable result of the test"},
                                        Example{"Locked after 0.8 s"}>,
                                  Required};
    /// Assigning a number that is not a `Selftest::TestState` throws Exception::InvalidEnumValue,
    /// and so does copying a record that holds one. Reading a tree without a valid state leaves the
    /// state unchanged.
    ReflectorLambda<int> state{this,
                               field<"state", Doc{"whether the test has run, and how it ended"},
                                     OnlyWords{"0 passed | 1 failed | 2 running | 3 not run"}>,
                               Selftest::notRun, isState};

    SelftestData() = default;
    /// A test with all fields. The state is stored and written unchecked.
    SelftestData(Lossless<int> id, std::string const& name, Lossless<bool> enable,
                 Selftest::TestState state, std::string const& result);
    SelftestData(SelftestData const& other) : SelftestData() { *this = other; }
    SelftestData& operator=(SelftestData const&) = default;
};

/// Enables or disables a test.
class TOLV_MESSAGES_API SelftestTestEnable : public MirroredObject {
public:
    Reflector<int> testEnableId{
        this,
        field<"testEnableId", Doc{"the number of the test that is enabled or disabled"},
              Example{"7"}>,
        Required, 0};
    Reflector<int> testEnable{
        this,
        field<"testEnable",
              Doc{"whether the test is enabled: 0 disables it, any other number enables it"},
              Example{"1"}>,
        Required, 0};
};

/// Reports the result of a test.
class TOLV_MESSAGES_API SelftestTestResult : public MirroredObject {
public:
    Reflector<int> testResultId{
        this,
        field<"testResultId", Doc{"the number of the test that has the result"}, Example{"7"}>,
        Required, 0};
    Reflector<std::string> testResultName{
        this,
        field<"testResultName", Doc{"the human-readable name of the test that has the result"},
              Example{"Reference clock"}>,
        Required};
    Reflector<std::string> testResult{
        this,
        field<"testResult", Doc{"the human-readable result that the test gave"},
              Example{"Locked after 0.8 s"}>,
        Required};
};

/// Reports the state of a test.
class TOLV_MESSAGES_API SelftestTestState : public MirroredObject {
    /// @throws Exception::InvalidEnumValue if `value` is not a `Selftest::TestState`.
    static bool isState(int const& value);

public:
    Reflector<int> testStateId{
        this, field<"testStateId", Doc{"the number of the test that has the state"}, Example{"7"}>,
        Required, 0};
    /// Checked like `SelftestData::state`.
    ReflectorLambda<int> testState{
        this,
        field<"testState", Doc{"the present state of the test, which includes how it ended"},
              OnlyWords{"0 passed | 1 failed | 2 running | 3 not run"}, Example{"2"}>,
        Selftest::notRun, isState};

    SelftestTestState() = default;
    SelftestTestState(SelftestTestState const& other) : SelftestTestState() { *this = other; }
    SelftestTestState& operator=(SelftestTestState const&) = default;
};

} // namespace Tolv::Msgs::Structs
