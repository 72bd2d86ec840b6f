// The commands of the mensura tool and what they share: exit statuses, the
// reports of failures, and the help texts.
#ifndef MENSURA_CLI_COMMANDS_H
#define MENSURA_CLI_COMMANDS_H

#include <string>
#include <string_view>
#include <vector>

#include "io.h"
#include "mensura/mensura.hpp"

namespace MensuraCli {

constexpr int kExitOk = 0;      // everything was done
constexpr int kExitUsage = 1;   // the command line was wrong; nothing was done
constexpr int kExitFailed = 2;  // some value or text could not be read or converted
constexpr int kExitIo = 3;      // reading standard input or writing standard output failed

using ArgumentList = std::vector<std::string_view>;

int RunConvert(const ArgumentList& arguments);
int RunParse(const ArgumentList& arguments);
int RunFormat(const ArgumentList& arguments);
int RunList(const ArgumentList& arguments);
int RunShow(const ArgumentList& arguments);
int RunInteractive(const ArgumentList& arguments);

extern const char* const kToolHelp;
extern const char* const kConvertHelp;
extern const char* const kParseHelp;
extern const char* const kFormatHelp;
extern const char* const kListHelp;
extern const char* const kShowHelp;
extern const char* const kInteractiveHelp;

// Writes "mensura COMMAND: problem" and where to find help to standard error,
// and returns kExitUsage.
int UsageError(std::string_view command, const std::string& problem);
// Writes the failure of one value to standard error: "mensura: line 2:
// ParseFailure: message" and, when there is one, the excerpt of the text with
// its caret line below it; or as one JSON object, without the excerpt. line 0
// is no line (a value given as an argument).
void ReportFailure(bool json, long line, std::string_view input, Mensura::ErrorCode code,
                   const std::string& message, const std::string& excerpt = {});
// Writes a notice on a value that was read to standard error: "mensura: line
// 2: note: text", or {"line":2,"note":"text"}.
void ReportNote(bool json, long line, const std::string& note);

}  // namespace MensuraCli

#endif  // MENSURA_CLI_COMMANDS_H
