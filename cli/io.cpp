#include "io.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "commands.h"

namespace MensuraCli {

bool LineReader::Fill() {
    // The answers to the lines read so far go out before a read that may
    // wait for more: see FlushOutput.
    FlushOutput();
    while (!m_ended) {
        const ssize_t got = read(STDIN_FILENO, m_buffer, sizeof m_buffer);
        if (got > 0) {
            m_start = 0;
            m_end = static_cast<std::size_t>(got);
            return true;
        }
        if (got < 0 && errno == EINTR) continue;
        m_ended = true;
        if (got < 0) m_error = errno;
    }
    return false;
}

LineReader::Status LineReader::Next(std::string& line) {
    std::string_view view;
    const Status status = Next(view);
    line.assign(view);
    return status;
}

LineReader::Status LineReader::Next(std::string_view& line) {
    // Most lines lie whole in the buffer, and are read where they are.
    const char* begin = m_buffer + m_start;
    const auto* newline = static_cast<const char*>(std::memchr(begin, '\n', m_end - m_start));
    if (newline == nullptr) return NextAcross(line);
    line = std::string_view(begin, static_cast<std::size_t>(newline - begin));
    m_start += line.size() + 1;
    return Found(line, false);
}

LineReader::Status LineReader::NextAcross(std::string_view& view) {
    m_line.clear();
    bool any = false;      // a byte or a line end of this line was read
    bool tooLong = false;  // and the line grew past kLongestLine
    while (true) {
        if (m_start == m_end && !Fill()) {
            if (m_error != 0) return Error;
            if (!any) return End;
            break;  // a last line without a line end
        }
        const char* begin = m_buffer + m_start;
        const std::size_t held = m_end - m_start;
        const auto* newline = static_cast<const char*>(std::memchr(begin, '\n', held));
        const std::size_t length = newline != nullptr ? newline - begin : held;
        any = true;
        // One byte more than the longest line, for the '\r' of a "\r\n".
        if (!tooLong && m_line.size() + length > kLongestLine + 1) {
            tooLong = true;
            m_line.clear();
        }
        if (!tooLong) m_line.append(begin, length);
        m_start += length;
        if (newline != nullptr) {
            ++m_start;
            break;
        }
    }
    view = m_line;
    return Found(view, tooLong);
}

LineReader::Status LineReader::Found(std::string_view& line, bool tooLong) {
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (m_number == 0 && line.substr(0, 3) == "\xEF\xBB\xBF") line.remove_prefix(3);
    ++m_number;
    if (tooLong || line.size() > kLongestLine) {
        line = {};
        return TooLong;
    }
    return Line;
}

std::string LineReader::Problem() const {
    return std::string("cannot read standard input: ") + std::strerror(m_error);
}

namespace {

// Standard output, buffered here rather than by stdio: answers pile up in
// one block that goes out in a single write(2) when it fills, when the tool
// is about to wait for input (LineReader::Fill), before a message on
// standard error, and at the end. So a stream of a million lines is written
// in large blocks, while whoever feeds the tool a line at a time, from a
// terminal or a pipe, gets each answer as soon as the tool has nothing more
// to read, as the help text promises.
constexpr std::size_t kOutputBlock = 1 << 16;
char g_output[kOutputBlock];
std::size_t g_outputHeld = 0;
bool g_outputFailed = false;
int g_outputError = 0;  // errno of the write that failed

void OutputError() {
    if (g_outputFailed) return;
    g_outputFailed = true;
    g_outputError = errno;
}

// Writes all of data to standard output, through short writes and signals.
void WriteAll(const char* data, std::size_t size) {
    while (size > 0 && !g_outputFailed) {
        const ssize_t wrote = write(STDOUT_FILENO, data, size);
        if (wrote < 0) {
            if (errno != EINTR) OutputError();
            continue;
        }
        data += wrote;
        size -= static_cast<std::size_t>(wrote);
    }
}

}  // namespace

void Print(std::string_view text) {
    if (g_outputFailed) return;
    if (text.size() > kOutputBlock - g_outputHeld) {
        FlushOutput();
        if (text.size() >= kOutputBlock) {
            WriteAll(text.data(), text.size());
            return;
        }
    }
    std::memcpy(g_output + g_outputHeld, text.data(), text.size());
    g_outputHeld += text.size();
}

void PrintLine(std::string_view line) {
    Print(line);
    Print("\n");
}

bool OutputFailed() {
    return g_outputFailed;
}

void FlushOutput() {
    WriteAll(g_output, g_outputHeld);
    g_outputHeld = 0;
}

int FinishOutput(int status) {
    FlushOutput();
    if (!g_outputFailed) return status;
    std::string text = "mensura: cannot write standard output";
    if (g_outputError != 0) text += std::string(": ") + std::strerror(g_outputError);
    text += '\n';
    std::fwrite(text.data(), 1, text.size(), stderr);
    return kExitIo;
}

}  // namespace MensuraCli
