// Objects of a program that use the library while they are destroyed: one constructed before
// anything of the library was used, one after. The exit status is 0 if both succeeded.

#include <cstdio>
#include <cstdlib>
#include <string>

#include <tolv/core/exceptions.h>
#include <tolv/messages.h>
#include <tolv/msgs/catalogue.h>
#include <tolv/msgs/excepts/converter_factory.h>

#include "support/messages.h"

namespace Tolv {
namespace {

class Witness {
public:
    explicit Witness(char const* name) : name_(name) {}
    Witness(Witness const&) = delete;
    Witness& operator=(Witness const&) = delete;
    ~Witness() {
        bool ok = true;
        for (auto const& row : Msgs::catalogue())
            ok = ok && Testing::received(Testing::written(*row.make())) != nullptr;
        auto const error =
            Msgs::Excepts::ConverterFactory::asMessage(Exception::InvalidHandle("h"));
        ok = ok && Testing::thrownBy<Exception::InvalidHandle>(
                       [&] { Msgs::Excepts::ConverterFactory::throwException(error); }) == "h";
        Msgs::Structs::Slot slot{};
        ok = ok && MetaData::TryGetAs(Testing::parsed(R"("pem")"), slot) &&
             slot == Msgs::Structs::Slot::pem;
        std::printf("%s: %s\n", name_, ok ? "ok" : "FAILED");
        if (!ok)
            std::_Exit(1);
    }

private:
    char const* name_;
};

Witness const early("before");

} // namespace
} // namespace Tolv

int main() { static Tolv::Witness const late("after"); }
