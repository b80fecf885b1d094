// Scenario commands that show the widget library's state.
#pragma once

#include "scenario.h"

namespace xpsim::runner {

// "widgets": one Log.txt line per widget ("xpsim: widget <listing>"), see widgetTree().
bool cmdWidgets(ScenarioContext& context, const ScenarioArgs& args, std::string* error);

}  // namespace xpsim::runner
