// Reading the tables compiled into the host (datarefs.tsv, commands.tsv): one header
// line, then one row per line with tab-separated fields.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace xpsim {

// Calls `row(fields)` for every data row of an embedded table, the header skipped.
// A line may end in CR LF; the CR is not part of its last field.
template <typename Row>
void forEachTsvRow(const char* text, std::size_t size, Row&& row) {
    std::string_view rest(text, size);
    std::vector<std::string_view> fields;
    bool header = true;
    while (!rest.empty()) {
        const std::size_t end = rest.find('\n');
        std::string_view line = rest.substr(0, end);
        rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (header) {
            header = false;
            continue;
        }
        fields.clear();
        for (std::size_t start = 0;;) {
            const std::size_t tab = line.find('\t', start);
            fields.push_back(line.substr(start, tab == std::string_view::npos ? tab : tab - start));
            if (tab == std::string_view::npos) break;
            start = tab + 1;
        }
        row(fields);
    }
}

}  // namespace xpsim
