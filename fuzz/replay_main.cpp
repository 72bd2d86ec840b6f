// Runs a fuzz target on saved inputs, for builds without libFuzzer: each
// argument is a file, or a folder whose files (not its subfolders) are read
// in the order of their names. Each input goes once through
// LLVMFuzzerTestOneInput, as libFuzzer runs a file given to it. A target
// that finds a fault aborts, which ends the run with the input's name on
// standard error; an argument that names nothing, or no input at all, is an
// error too, so that a misplaced folder cannot pass unnoticed.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

bool Replay(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return false;
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file),
                                  std::istreambuf_iterator<char>()};
    std::fprintf(stderr, "replaying %s (%zu bytes)\n", path.c_str(), bytes.size());
    // A fresh copy of exactly the input's size, as libFuzzer hands it over,
    // so that a read past its end shows under AddressSanitizer.
    std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(data.data(), data.size());
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    std::size_t replayed = 0;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path argument(argv[i]);
        std::error_code error;
        if (std::filesystem::is_directory(argument, error)) {
            std::vector<std::filesystem::path> files;
            for (const auto& entry : std::filesystem::directory_iterator(argument, error)) {
                if (entry.is_regular_file()) files.push_back(entry.path());
            }
            std::sort(files.begin(), files.end());
            for (const auto& file : files) {
                if (!Replay(file)) {
                    std::fprintf(stderr, "cannot read %s\n", file.c_str());
                    return 1;
                }
                ++replayed;
            }
        } else if (Replay(argument)) {
            ++replayed;
        } else {
            std::fprintf(stderr, "no such file or folder: %s\n", argv[i]);
            return 1;
        }
    }
    if (replayed == 0) {
        std::fprintf(stderr, "no input to replay\n");
        return 1;
    }
    std::printf("%zu inputs replayed\n", replayed);
    return 0;
}
