#include "ui/controls/NumberEntry.h"

#include <climits>
#include <cstdlib>

namespace {
bool Blank(const std::string& text) {
    return text.find_first_not_of(" \t") == std::string::npos;
}

bool LoneMinus(const std::string& text) {
    const auto first = text.find_first_not_of(" \t");
    return first != std::string::npos && text[first] == '-' && Blank(text.substr(first + 1));
}

// The number at the start of the text, as "%d%s" reads it: leading blanks,
// a sign and digits; `rest` tells whether anything but blanks follows.
bool LeadingNumber(const std::string& text, long* value, bool* rest) {
    const char* s = text.c_str();
    char* end = nullptr;
    *value = std::strtol(s, &end, 10);
    if (end == s) return false;
    *rest = !Blank(std::string(end));
    return true;
}
} // namespace

EntryResult CheckNumberEntry(const std::string& text, int low, int high, bool typing) {
    if (text.empty()) return {EntryAction::Clear};
    if (Blank(text)) return {EntryAction::Apply, low > 0 ? low : 0};
    long n = 0;
    bool rest = false;
    if (LoneMinus(text))
        n = 0; // the start of a negative number counts as 0
    else if (!LeadingNumber(text, &n, &rest))
        return {EntryAction::Clear};
    else if (n < INT_MIN || n > INT_MAX)
        return {EntryAction::Repair};
    else if (rest)
        return {EntryAction::Trim, static_cast<int>(n)};
    if ((n >= low && n <= high) || low == high) return {EntryAction::Apply, static_cast<int>(n)};
    if (typing && ((low > 0 && n > 0 && n < low) || (high < 0 && n < 0 && n > high)))
        return {EntryAction::Stand, static_cast<int>(n)};
    return {EntryAction::Repair};
}

bool NeedsRewrite(const std::string& text, int value) {
    // A lone minus sign is the start of a negative number, not a fault.
    return !LoneMinus(text) && text != std::to_string(value);
}

int SpinStep(int value, int delta, int low, int high, bool wraps) {
    const long long v = static_cast<long long>(value) + delta;
    if (v < low) return wraps ? high : low;
    if (v > high) return wraps ? low : high;
    return static_cast<int>(v);
}
