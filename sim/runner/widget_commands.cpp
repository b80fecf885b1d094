// The "widgets" scenario command: the widget trees written into the host's Log.txt,
// where "expect log" and the tests find them.

#include "widget_commands.h"

#include "host_api.h"
#include "widget_driver.h"

namespace xpsim::runner {

bool cmdWidgets(ScenarioContext&, const ScenarioArgs&, std::string*) {
    std::vector<std::string> lines = widgets::widgetTree();
    hostapi::log("xpsim: widgets: " + std::to_string(lines.size()));
    for (const std::string& line : lines) hostapi::log("xpsim: widget " + line);
    return true;
}

}  // namespace xpsim::runner
