#include "CorvaneCore/support/StandardOrder.hpp"

#include "CorvaneCore/support/Text.hpp"

#include <string>

namespace corvane::text {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Compares the digit runs starting at `i` and `j` by value and moves past them.
int compareNumbers(std::string_view a, std::size_t& i, std::string_view b, std::size_t& j) {
    auto run = [](std::string_view text, std::size_t& at) {
        while (at < text.size() && text[at] == '0' && at + 1 < text.size() && isDigit(text[at + 1]))
            ++at;
        auto start = at;
        while (at < text.size() && isDigit(text[at]))
            ++at;
        return text.substr(start, at - start);
    };
    auto x = run(a, i), y = run(b, j);
    if (x.size() != y.size()) return x.size() < y.size() ? -1 : 1;
    auto order = x.compare(y);
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

} // namespace

int standardCompare(std::string_view a, std::string_view b) {
    auto x = lowercased(a), y = lowercased(b);
    std::size_t i = 0, j = 0;
    while (i < x.size() && j < y.size()) {
        if (isDigit(x[i]) && isDigit(y[j])) {
            if (auto order = compareNumbers(x, i, y, j)) return order;
            continue;
        }
        // Byte order of UTF-8 is code point order.
        auto c = static_cast<unsigned char>(x[i]), d = static_cast<unsigned char>(y[j]);
        if (c != d) return c < d ? -1 : 1;
        ++i, ++j;
    }
    if (i < x.size() || j < y.size()) return i < x.size() ? 1 : -1;
    auto order = a.compare(b);
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

} // namespace corvane::text
