// The control panel's pure rules; the widgets in ListBox.cpp, Popup.cpp and
// ControlPanel.cpp apply them.

#include "ui/Layout.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace vorlith {

std::vector<std::string> VL_SplitItems(const char* text) {
    std::vector<std::string> pieces;
    const char* rest = text ? text : "";
    while (*rest) {
        const char* separator = std::strchr(rest, ';');
        if (!separator) {
            pieces.emplace_back(rest);
            break;
        }
        pieces.emplace_back(rest, static_cast<std::size_t>(separator - rest));
        rest = separator + 1;
    }
    return pieces;
}

namespace {

std::string Cut(const std::string& text, std::size_t size) {
    return size == 0 ? std::string() : text.substr(0, std::min(text.size(), size - 1));
}

// Splits text after kVL_LineWidth characters into (head, tail) as the lists do.
void SplitOnce(std::string& text, std::string& tail) {
    tail.clear();
    if (text.size() <= kVL_LineWidth) return;
    std::size_t end = kVL_LineWidth;
    std::size_t tailStart = kVL_LineWidth;
    if (text[kVL_LineWidth] != ' ') {
        for (std::size_t k = kVL_LineWidth; k >= 1; --k) {
            if (text[k] == ' ') {
                end = k;
                tailStart = k + 1;  // the blank itself is dropped
                break;
            }
        }
    }
    tail = text.substr(tailStart);
    text.resize(end);
}

}  // namespace

VL_LineParts VL_SplitLine(const char* text, std::size_t workSize, std::size_t partSize) {
    VL_LineParts parts;
    if (!text || workSize == 0) return parts;
    std::string work(text, strnlen(text, workSize - 1));
    std::string second, third;
    SplitOnce(work, second);
    second = Cut(second, partSize);
    SplitOnce(second, third);
    parts.part[0] = Cut(work, partSize);
    parts.part[1] = second;
    parts.part[2] = Cut(third, partSize);
    return parts;
}

VL_PopupLayout VL_LayOutPopup(const char* items, int current, int charWidth, int x, int y) {
    VL_PopupLayout menu;
    std::size_t longest = 0;
    for (const std::string& piece : VL_SplitItems(items)) {
        VL_PopupItem item;
        item.separator = piece == "-";
        item.enabled = !item.separator && (piece.empty() || piece[0] != '(');
        item.text = !item.separator && !item.enabled ? piece.substr(1) : piece;
        longest = std::max(longest, item.text.size());
        menu.items.push_back(item);
    }
    if (current < 0) current = 0;
    const int columnWidth = static_cast<int>(longest) * charWidth + 35;

    int columnX = 0, rowY = 0, lowest = 0, columns = 1, inColumn = 0;
    int currentX = 0, currentY = 0;
    for (std::size_t i = 0; i < menu.items.size(); ++i) {
        VL_PopupItem& item = menu.items[i];
        const int height = item.separator ? kVL_PopupSeparatorHeight : kVL_PopupItemHeight;
        item.left = columnX;
        item.right = columnX + columnWidth;
        item.top = rowY;
        item.bottom = rowY - height;
        if (static_cast<int>(i) == current) {
            currentX = columnX;
            currentY = rowY;
        }
        rowY -= height;
        lowest = std::min(lowest, rowY);
        ++inColumn;
        if (rowY < kVL_PopupColumnBottom) {
            ++columns;
            rowY = 0;
            columnX += columnWidth;
            menu.columnStarts.push_back(columnX);
            inColumn = 0;
        }
    }
    if (inColumn == 0 && columns > 1) {
        --columns;
        menu.columnStarts.pop_back();
    }
    menu.left = x - currentX;
    menu.top = y - currentY;
    menu.right = x + columnWidth * columns - currentX;
    menu.bottom = y + lowest - currentY;
    VL_ClampPopup(menu.left, menu.top, menu.right, menu.bottom);
    return menu;
}

void VL_ClampPopup(int& left, int& top, int& right, int& bottom) {
    if (right > 1014) {
        left -= right - 1014;
        right = 1014;
    }
    if (left < 10) {
        right += 10 - left;
        left = 10;
    }
    if (bottom < 10) {
        top += 10 - bottom;
        bottom = 10;
    }
    if (top > 738) {
        bottom -= top - 738;
        top = 738;
    }
}

int VL_PopupItemAt(const VL_PopupLayout& menu, int x, int y) {
    const int rx = x - menu.left, ry = y - menu.top;
    for (std::size_t i = 0; i < menu.items.size(); ++i) {
        const VL_PopupItem& item = menu.items[i];
        if (item.left <= rx && rx < item.right && item.bottom <= ry && ry < item.top) return static_cast<int>(i);
    }
    return -1;
}

void VL_ScrollClick(VL_ScrollState& s, const VL_TrackMetrics& m, int low, int high, int at) {
    auto within = [at](int from, int to) { return from <= at && at <= to; };
    if (within(low + m.downButton + m.downPage + m.thumb, high - m.upButton)) {
        s.position = std::min(s.position + s.pageAmount, s.maximum);
    } else if (within(low + m.downButton, high - m.upButton - m.upPage - m.thumb)) {
        s.position = std::max(s.position - s.pageAmount, s.minimum);
    } else if (within(high - m.upButton, high)) {
        s.position = std::min(s.position + 1, s.maximum);
    } else if (within(low, low + m.downButton)) {
        s.position = std::max(s.position - 1, s.minimum);
    } else if (within(low + m.downButton + m.downPage, high - m.upButton - m.upPage)) {
        s.slop = low + m.downButton + m.downPage + m.thumb / 2 - at;
        s.dragging = 1;
    } else {
        s.dragging = 0;
    }
}

int VL_ScrollDragPosition(const VL_ScrollState& s, const VL_TrackMetrics& m, int low, int high, int at) {
    const int start = low + m.downButton + m.thumb / 2;
    const int span = (high - m.upButton - m.thumb / 2) - start;
    // A track too short for its thumb has nowhere to drag to.
    if (span <= 0) return s.position;
    double position = std::lround(double((at + s.slop) - start) / span * s.maximum);
    return static_cast<int>(std::max<double>(s.minimum, std::min<double>(s.maximum, position)));
}

}  // namespace vorlith
