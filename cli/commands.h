// The commands of the mensura tool and what they share: exit statuses, the
// reports of failures, and the help texts.
#ifndef MENSURA_CLI_COMMANDS_H
#define MENSURA_CLI_COMMANDS_H

#include <string>
#include <string_view>
#include <vector>

#include "mensura/mensura.hpp"

namespace MensuraCli {

constexpr int kExitOk = 0;      // everything was done
constexpr int kExitUsage = 1;   // the command line was wrong; nothing was done
constexpr int kExitFailed = 2;  // some value or text could not be read or converted

using ArgumentList = std::vector<std::string_view>;

int RunConvert(const ArgumentList& arguments);
int RunParse(const ArgumentList& arguments);
int RunFormat(const ArgumentList& arguments);
int RunList(const ArgumentList& arguments);
int RunShow(const ArgumentList& arguments);

extern const char* const kToolHelp;
extern const char* const kConvertHelp;
extern const char* const kParseHelp;
extern const char* const kFormatHelp;
extern const char* const kListHelp;
extern const char* const kShowHelp;

// Writes line and a line end to standard output.
void PrintLine(std::string_view line);
// Writes "mensura COMMAND: problem" and where to find help to standard error,
// and returns kExitUsage.
int UsageError(std::string_view command, const std::string& problem);
// Writes the failure of one value to standard error: "mensura: line 2:
// ParseFailure: message", or as one JSON object. line 0 is no line (a value
// given as an argument).
void ReportFailure(bool json, long line, std::string_view input, Mensura::ErrorCode code,
                   const std::string& message);

}  // namespace MensuraCli

#endif  // MENSURA_CLI_COMMANDS_H
