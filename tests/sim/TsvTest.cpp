// The reader of the host's embedded tables (tsv.h): which lines are rows and how a row
// splits into fields.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tsv.h"

namespace {

std::vector<std::vector<std::string>> rows(std::string_view text) {
    std::vector<std::vector<std::string>> out;
    xpsim::forEachTsvRow(text.data(), text.size(), [&](const std::vector<std::string_view>& fields) {
        out.emplace_back(fields.begin(), fields.end());
    });
    return out;
}

using Rows = std::vector<std::vector<std::string>>;

TEST(Tsv, RowsSkipTheHeaderSplitOnTabsAndDropCarriageReturns) {
    EXPECT_EQ(rows("name\ttype\r\na\tint\r\nb\tfloat[2]\r\n"), (Rows{{"a", "int"}, {"b", "float[2]"}}));
    // The last line needs no newline; empty fields and an empty line stay as they are.
    EXPECT_EQ(rows("h\na\t\tc\n\nlast\tx"), (Rows{{"a", "", "c"}, {""}, {"last", "x"}}));
    // A CR inside a field is data; only the one before the line's end is dropped.
    EXPECT_EQ(rows("h\na\rb\tc\r"), (Rows{{"a\rb", "c"}}));
}

TEST(Tsv, HeaderOnlyOrEmptyTableHasNoRows) {
    EXPECT_TRUE(rows("").empty());
    EXPECT_TRUE(rows("name\tdescription").empty());
    EXPECT_TRUE(rows("name\tdescription\r\n").empty());
}

}  // namespace
