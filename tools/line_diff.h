// Comparing a file of the source tree with what a generator writes: the lines
// that differ, as a unified diff. The generators of tools/ share it.
#ifndef MENSURA_TOOLS_LINE_DIFF_H
#define MENSURA_TOOLS_LINE_DIFF_H

#include <string>
#include <vector>

namespace MensuraTools {

// The lines of text, without their line feeds.
std::vector<std::string> Lines(const std::string& text);

// Prints the lines that differ between a (the file at `path`) and b (what
// `source` gives, e.g. "the catalogue") to standard output as a unified diff
// with three lines of context, at most 400 lines of it.
void PrintDiff(const std::vector<std::string>& a, const std::vector<std::string>& b,
               const std::string& path, const std::string& source);

}  // namespace MensuraTools

#endif  // MENSURA_TOOLS_LINE_DIFF_H
