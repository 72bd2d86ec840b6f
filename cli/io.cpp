#include "io.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "commands.h"

namespace MensuraCli {

bool LineReader::Fill() {
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
    line.clear();
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
        if (!tooLong && line.size() + length > kLongestLine + 1) {
            tooLong = true;
            line.clear();
        }
        if (!tooLong) line.append(begin, length);
        m_start += length;
        if (newline != nullptr) {
            ++m_start;
            break;
        }
    }
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (m_number == 0 && line.compare(0, 3, "\xEF\xBB\xBF") == 0) line.erase(0, 3);
    ++m_number;
    if (tooLong || line.size() > kLongestLine) {
        line.clear();
        return TooLong;
    }
    return Line;
}

std::string LineReader::Problem() const {
    return std::string("cannot read standard input: ") + std::strerror(m_error);
}

namespace {

bool g_outputFailed = false;
int g_outputError = 0;  // errno of the write that failed

void OutputError() {
    if (g_outputFailed) return;
    g_outputFailed = true;
    g_outputError = errno;
}

}  // namespace

void Print(std::string_view text) {
    if (g_outputFailed) return;
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) OutputError();
}

void PrintLine(std::string_view line) {
    Print(line);
    Print("\n");
}

bool OutputFailed() {
    return g_outputFailed;
}

void FlushOutput() {
    if (!g_outputFailed && std::fflush(stdout) != 0) OutputError();
}

int FinishOutput(int status) {
    FlushOutput();
    if (!g_outputFailed && std::ferror(stdout)) OutputError();
    if (!g_outputFailed) return status;
    std::string text = "mensura: cannot write standard output";
    if (g_outputError != 0) text += std::string(": ") + std::strerror(g_outputError);
    text += '\n';
    std::fwrite(text.data(), 1, text.size(), stderr);
    return kExitIo;
}

}  // namespace MensuraCli
