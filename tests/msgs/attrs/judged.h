#pragma once

#include <exception>
#include <string>

#include <gtest/gtest.h>

namespace Tolv::Testing {

/// What both `validate` and `explainInvalid` say about a payload: "valid", the sentence, or "throws
/// " and the text of the exception. Fails the test if they disagree.
template <class Payload>
std::string judged(Payload const& payload) {
    std::string failure;
    bool valid = false;
    try {
        valid = payload.validate();
    } catch (std::exception const& exception) {
        failure = exception.what();
    }
    try {
        auto const sentence = payload.explainInvalid();
        EXPECT_EQ(failure, "") << "explainInvalid gave \"" << sentence << '"';
        EXPECT_EQ(sentence.empty(), valid) << sentence;
        return valid ? "valid" : sentence;
    } catch (std::exception const& exception) {
        EXPECT_EQ(failure, exception.what());
        return std::string("throws ") + exception.what();
    }
}

} // namespace Tolv::Testing
