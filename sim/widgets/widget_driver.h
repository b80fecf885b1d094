// What the widget library offers the runner and the tests beyond the SDK: a listing of
// every widget tree, exported from XPWidgets_64.so.
#pragma once

#include <string>
#include <vector>

#include "driver.h"

namespace xpsim {
namespace widgets {

// One line per widget, trees in creation order of their top widgets, children indented
// under their parent in child order:
//   <indent><Class> "<descriptor>" (<left>,<top>,<right>,<bottom>) <shown|hidden>[ unseen]
//   [ root][ focus] owner=<plug-in>[ {<property>=<value>, ...}]
XPSIM_API std::vector<std::string> widgetTree();

}  // namespace widgets
}  // namespace xpsim
