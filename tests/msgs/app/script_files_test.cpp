#include <tolv/msgs/app/script_files.h>

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/app/messages.h>

#include "support/captured_output.h"
#include "support/messages.h"
#include "support/records.h"

namespace Tolv::Msgs::App {
namespace {

using namespace Tolv::Testing;

TEST(ScriptFiles, Texts) {
    expectTexts<QmlFileListRequestData>(R"({"ApplicationType":""})", R"({"ApplicationType":"a"})");
    expectTexts<QmlFileListResponseData::FileMetaData>(
        R"({"FileName":"","FileSizeInBytes":0})",
        R"({"FileName":"a","FileSizeInBytes":9223372036854775807})");
    expectTexts<QmlFileListResponseData>(
        R"({"ApplicationName":"","MinFrameworkVersion":0,"RootScript":"","FileList":[]})",
        R"({"ApplicationName":"a","MinFrameworkVersion":-9223372036854775808,"RootScript":"b",)"
        R"("FileList":[{"FileName":"c","FileSizeInBytes":5000000000},)"
        R"({"FileName":"d","FileSizeInBytes":1}]})");
    expectTexts<QmlFileRequestData>(R"({"ApplicationType":"","FileName":""})",
                                    R"({"ApplicationType":"a","FileName":"b"})");
    expectTexts<QmlFileResponseData>(
        R"({"FileName":"","FileOffset":0,"FileSize":0,"Content":""})",
        R"({"FileName":"a","FileOffset":4294967296,"FileSize":9223372036854775807,"Content":"b"})");
    EXPECT_EQ(written(QmlFileRequestData("a", "b")), R"({"ApplicationType":"a","FileName":"b"})");
    EXPECT_EQ(written(QmlFileResponseData("a", 4294967297, 4294967298, "b")),
              R"({"FileName":"a","FileOffset":4294967297,"FileSize":4294967298,"Content":"b"})");
}

TEST(ScriptFiles, SizesThatDoNotFit) {
    for (auto const* const size : {"9223372036854775808", "1e19", "0.5", R"("7")"}) {
        QmlFileResponseData data;
        readInto(data, R"({"FileName":"a","FileOffset":1,"Content":"b","FileSize":)" +
                           std::string(size) + "}");
        EXPECT_EQ(written(data), R"({"FileName":"a","FileOffset":1,"Content":"b"})") << size;
    }
}

TEST(ScriptFiles, FileListThatIsNone) {
    constexpr auto before = R"({"ApplicationName":"a","MinFrameworkVersion":1,"RootScript":"b",)"
                            R"("FileList":[{"FileName":"c","FileSizeInBytes":2}]})";
    for (auto const* const list : {R"({"FileName":"d","FileSizeInBytes":3})",
                                   R"({"type":9,"len":0})", // records have no encoded form
                                   R"("d")", "null"}) {
        SCOPED_TRACE(list);
        QmlFileListResponseData data;
        readInto(data, before);
        CapturedOutput const output;
        readInto(data, R"({"ApplicationName":"new","FileList":)" + std::string(list) + "}");
        EXPECT_EQ(output.text(),
                  "Exception MetaDat::ReflectorArray Should have gotten an Array, but didn't\n");
        EXPECT_EQ(written(data), R"({"ApplicationName":"new",)"
                                 R"("FileList":[{"FileName":"c","FileSizeInBytes":2}]})");
    }
    // An entry that is no object has no fields, and none of them throws.
    QmlFileListResponseData data;
    CapturedOutput const output;
    readInto(data, R"({"FileList":[3,{"FileName":"d"}]})");
    EXPECT_EQ(output.text(), "");
    EXPECT_EQ(written(data), R"({"FileList":[{"FileName":"","FileSizeInBytes":0},)"
                             R"({"FileName":"d","FileSizeInBytes":0}]})");
}

TEST(ScriptFiles, ContentTravelsAsItIs) {
    // Each ASCII byte, and characters of two to four bytes.
    std::string content;
    for (char byte = 0; byte < 127; ++byte)
        content += byte;
    content += "\x7f\u00fc\u20ac\U0001F600\u2028";
    auto const read =
        sent(QmlFileResponseMessage(QmlFileResponseData("a", 0, 5000000000, content)));
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->payload().content(), content);
    EXPECT_EQ(read->payload().fileSize(), 5000000000);
}

TEST(ScriptFiles, ContentThatIsNoTextIsRefused) {
    for (auto const* const content : {
             "\xff",
             "GIF89a\x80",
             "cut within \xc3",
             "\xe2\x82",
             "\xc0\x80",
             "\xed\xa0\x80",
         }) {
        QmlFileResponseMessage const message(QmlFileResponseData("a", 0, 1, content));
        auto const text = thrownBy<Exception::InvalidParameter>([&] { written(message); });
        EXPECT_NE(text.find("Data.Content"), std::string::npos) << text;
    }
    // The place is given within lists, too.
    QmlFileListResponseData data;
    data.fileList.edit().resize(2);
    data.fileList.edit()[1].fileName = "\x80";
    auto const text =
        thrownBy<Exception::InvalidParameter>([&] { written(QmlFileListResponseMessage(data)); });
    EXPECT_NE(text.find("Data.FileList[1].FileName"), std::string::npos) << text;
}

TEST(ScriptFiles, FileInPieces) {
    std::string file;
    for (int i = 0; file.size() <= 65536; ++i)
        file += "line " + std::to_string(i) + " \u20ac\n";
    std::string together;
    while (together.size() < file.size()) {
        auto end = std::min(together.size() + 1000, file.size());
        while (end < file.size() && (static_cast<unsigned char>(file[end]) & 0xC0U) == 0x80)
            --end; // not within a character
        auto const read = sent(QmlFileResponseMessage(QmlFileResponseData(
            "main", static_cast<long long>(together.size()), static_cast<long long>(file.size()),
            file.substr(together.size(), end - together.size()))));
        ASSERT_EQ(read->payload().fileOffset(), static_cast<long long>(together.size()));
        together += read->payload().content();
    }
    EXPECT_EQ(together, file);
}

} // namespace
} // namespace Tolv::Msgs::App
