// SPDX-License-Identifier: GPL-2.0-or-later
// Runs a fuzz target over the files of a corpus, as a test of what was once found.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[i])) {
            if (!entry.is_regular_file()) continue;
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string bytes{std::istreambuf_iterator<char>(file), {}};
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            ++count;
        }
    }
    std::printf("%d inputs replayed\n", count);
    return count > 0 ? 0 : 1;
}
