#include <instrument/front_panel.h>

namespace Example {

std::string frontPanelScript() {
    std::string script = "import Panel 1.0\n\nPanel {\n    title: \"Spektrum — 周波数 📈\"\n";
    for (int trace = 1; script.size() < 100'000; ++trace) {
        auto const number = std::to_string(trace);
        script += "    Label { id: trace" + number + "; text: \"Messkurve №" + number +
                  ": ΔƑ ±½ Hz, 5 µV ≤ Û < 3 kΩ·mA 🔬\" }\n";
    }
    return script + "}\n";
}

} // namespace Example
