// Standard input a line at a time and standard output with its errors. The
// tool streams: it holds one line of input at a time, however long the
// input, and tells a read or a write that failed from the end of input.
#ifndef MENSURA_CLI_IO_H
#define MENSURA_CLI_IO_H

#include <cstddef>
#include <string>
#include <string_view>

namespace MensuraCli {

// The longest line that the tool reads, in bytes without its line end. A
// value with its units is a few dozen bytes; a longer line is reported and
// skipped without being held, which bounds the memory and the time of one
// line.
constexpr std::size_t kLongestLine = 65536;

// Reads standard input line by line through read(2), which returns what a
// terminal has as soon as it has it.
class LineReader {
public:
    enum Status {
        Line,     // a line, in `line`
        TooLong,  // a line longer than kLongestLine, skipped; `line` is empty
        End,      // the end of input
        Error,    // reading failed: Problem() says why
    };

    // The next line without its line end: "\n", or "\r\n". A last line
    // without a line end is a line; a byte order mark at the start of the
    // input is dropped. After End or Error, the same again.
    Status Next(std::string& line);
    // The same, without a copy: line stays valid until the next call.
    Status Next(std::string_view& line);
    // The number of the line last read, from 1.
    long Number() const { return m_number; }
    // Why reading failed: "cannot read standard input: Is a directory".
    std::string Problem() const;

private:
    // Refills the buffer: false at the end of input or on an error.
    bool Fill();
    // Next for a line that the buffer does not hold whole: gathered in
    // m_line, at most kLongestLine and a '\r' of it.
    Status NextAcross(std::string_view& line);
    // The line that Next found, without its '\r' and, at the start of the
    // input, its byte order mark.
    Status Found(std::string_view& line, bool tooLong);

    char m_buffer[65536];
    std::string m_line;
    std::size_t m_start = 0;
    std::size_t m_end = 0;
    long m_number = 0;
    bool m_ended = false;
    int m_error = 0;  // errno of the read that failed
};

// Writes text to standard output, buffered: the buffer goes out when it
// fills, when LineReader is about to wait for input, in FlushOutput and in
// FinishOutput. Once a write has failed, the rest is dropped and
// OutputFailed() is true.
void Print(std::string_view text);
// Writes line and a line end to standard output.
void PrintLine(std::string_view line);
// Whether a write to standard output has failed so far.
bool OutputFailed();
// Writes out what standard output holds, as before a message on standard
// error, so that the two keep their order.
void FlushOutput();
// Writes out what standard output holds; when a write failed, now or
// before, reports it on standard error ("mensura: cannot write standard
// output: No space left on device") and returns kExitIo, else status.
int FinishOutput(int status);

}  // namespace MensuraCli

#endif  // MENSURA_CLI_IO_H
