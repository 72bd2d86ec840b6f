#include "line_diff.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>

namespace MensuraTools {

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

void PrintDiff(const std::vector<std::string>& a, const std::vector<std::string>& b,
               const std::string& path, const std::string& source) {
    // The lines that both begin and end with stand as they are; the longest
    // common subsequence of the rest, from the ends.
    std::size_t head = 0;
    while (head < a.size() && head < b.size() && a[head] == b[head]) ++head;
    std::size_t tail = 0;
    while (tail < a.size() - head && tail < b.size() - head &&
           a[a.size() - 1 - tail] == b[b.size() - 1 - tail]) {
        ++tail;
    }
    const std::size_t n = a.size() - tail, m = b.size() - tail;
    std::vector<std::vector<unsigned>> common(n - head + 1, std::vector<unsigned>(m - head + 1, 0));
    auto at = [&](std::size_t i, std::size_t j) -> unsigned& { return common[i - head][j - head]; };
    for (std::size_t i = n; i-- > head;) {
        for (std::size_t j = m; j-- > head;) {
            at(i, j) = a[i] == b[j] ? at(i + 1, j + 1) + 1 : std::max(at(i + 1, j), at(i, j + 1));
        }
    }
    struct Step {
        char op;  // ' ', '-' or '+'
        std::size_t i, j;
    };
    std::vector<Step> steps;
    std::size_t i = 0, j = 0;
    for (; i < head; ++i, ++j) steps.push_back({' ', i, j});
    while (i < n || j < m) {
        if (i < n && j < m && a[i] == b[j]) {
            steps.push_back({' ', i++, j++});
        } else if (i < n && (j == m || at(i + 1, j) >= at(i, j + 1))) {
            steps.push_back({'-', i++, j});
        } else {
            steps.push_back({'+', i, j++});
        }
    }
    for (; i < a.size(); ++i, ++j) steps.push_back({' ', i, j});

    std::printf("--- %s\n+++ %s\n", path.c_str(), source.c_str());
    constexpr std::size_t kContext = 3;
    constexpr std::size_t kMostLines = 400;
    std::size_t printed = 0;
    std::size_t k = 0;
    while (k < steps.size()) {
        if (steps[k].op == ' ') {
            ++k;
            continue;
        }
        std::size_t begin = k > kContext ? k - kContext : 0;
        std::size_t end = k;  // one past the last change of the hunk
        for (std::size_t s = k; s < steps.size(); ++s) {
            if (steps[s].op != ' ') {
                end = s + 1;
            } else if (s - end >= 2 * kContext) {
                break;
            }
        }
        const std::size_t stop = std::min(steps.size(), end + kContext);
        std::size_t old_count = 0, new_count = 0;
        for (std::size_t s = begin; s < stop; ++s) {
            if (steps[s].op != '+') ++old_count;
            if (steps[s].op != '-') ++new_count;
        }
        const std::size_t old_start = old_count == 0 ? steps[begin].i : steps[begin].i + 1;
        const std::size_t new_start = new_count == 0 ? steps[begin].j : steps[begin].j + 1;
        std::printf("@@ -%zu,%zu +%zu,%zu @@\n", old_start, old_count, new_start, new_count);
        for (std::size_t s = begin; s < stop; ++s) {
            if (printed == kMostLines) {
                std::printf("... and more\n");
                return;
            }
            const std::string& line = steps[s].op == '+' ? b[steps[s].j] : a[steps[s].i];
            std::printf("%c%s\n", steps[s].op, line.c_str());
            ++printed;
        }
        k = stop;
    }
}

}  // namespace MensuraTools
