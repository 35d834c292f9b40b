// Uses libTolvCore alone.

#include <tolv/core.h>

#include <iostream>
#include <string>

int main() {
    using namespace Tolv::MetaData;

    Element tree;
    ReaderJson::Read(tree, R"({"answer":[42, null]})");
    std::string text;
    WriterJson::Write(tree, text, true);
    std::cout << "tree: " << text << '\n';
    return text.find("42") == std::string::npos;
}
