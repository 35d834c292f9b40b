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
    Reflector<int> id{this, "id"_key, Required, 0};              ///< of the test
    Reflector<std::string> name{this, "name"_key, Required};     ///< human-readable
    Reflector<bool> enable{this, "enable"_key, Required, true};  ///< whether the test is run
    Reflector<std::string> result{this, "result"_key, Required}; ///< human-readable
    /// Assigning a number that is not a `Selftest::TestState` throws Exception::InvalidEnumValue,
    /// and so does copying a record that holds one. Reading a tree without a valid state leaves the
    /// state unchanged.
    ReflectorLambda<int> state{this, field<"state", OnlyWords{"0 passed | 1 failed | 2 running | 3 not run"}>, Selftest::notRun, isState};

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
    Reflector<int> testEnableId{this, "testEnableId"_key, Required, 0}; ///< of the test
    /// 0: disabled; otherwise enabled.
    Reflector<int> testEnable{this, "testEnable"_key, Required, 0};
};

/// Reports the result of a test.
class TOLV_MESSAGES_API SelftestTestResult : public MirroredObject {
public:
    Reflector<int> testResultId{this, "testResultId"_key, Required, 0}; ///< of the test
    /// The human-readable name of the test.
    Reflector<std::string> testResultName{this, "testResultName"_key, Required};
    /// The human-readable result.
    Reflector<std::string> testResult{this, "testResult"_key, Required};
};

/// Reports the state of a test.
class TOLV_MESSAGES_API SelftestTestState : public MirroredObject {
    /// @throws Exception::InvalidEnumValue if `value` is not a `Selftest::TestState`.
    static bool isState(int const& value);

public:
    Reflector<int> testStateId{this, "testStateId"_key, Required, 0}; ///< of the test
    /// Checked like `SelftestData::state`.
    ReflectorLambda<int> testState{this, field<"testState", OnlyWords{"0 passed | 1 failed | 2 running | 3 not run"}>, Selftest::notRun, isState};

    SelftestTestState() = default;
    SelftestTestState(SelftestTestState const& other) : SelftestTestState() { *this = other; }
    SelftestTestState& operator=(SelftestTestState const&) = default;
};

} // namespace Tolv::Msgs::Structs
