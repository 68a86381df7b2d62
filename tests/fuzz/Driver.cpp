// Drives a fuzz target where clang's libFuzzer does not.
//   fuzz_NAME CORPUS [SEED]   runs the kept inputs, then a fixed number of mutations of them
//   fuzz_NAME FILE            runs one input again
// With BRINDLE_LONG set the mutations go on for a minute, and each minute begins where no short run comes.

#include "fuzz/FuzzTarget.h"
#include "fuzz/Mutator.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

// There only in a sanitized build: called before the sanitizer ends the program.
// NOLINTNEXTLINE(*-reserved-identifier)
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace {

namespace fs = std::filesystem;
using brindle::fuzz::Mutator;

constexpr std::size_t iterations = 20'000;
constexpr auto longTime = std::chrono::minutes(1);
/// Seconds after which an input counts as one that hangs.
constexpr unsigned patience = 60;

const char *program = "";
std::string current;

void tellInput()
{
    const std::string file = fs::temp_directory_path() / ("fuzz-failure-" + std::to_string(getpid()));
    std::ofstream(file, std::ios::binary) << current;
    std::fprintf(stderr, "\nThe input, of %zu bytes:\n", current.size());
    for (const char byte : current) {
        const bool isPlain = byte >= ' ' && byte <= '~' && byte != '\\';
        std::fprintf(stderr, isPlain ? "%c" : "\\x%02x", static_cast<unsigned char>(byte));
    }
    std::fprintf(stderr, "\nAgain: %s %s\n", program, file.c_str());
}

void failBySignal(int signal)
{
    std::fprintf(stderr, signal == SIGALRM ? "The input takes too long.\n" : "Ended by signal %d.\n", signal);
    tellInput();
    _exit(1);
}

void watchForFailures()
{
    for (const int signal : {SIGABRT, SIGFPE, SIGILL, SIGALRM})
        std::signal(signal, failBySignal);
    if (__sanitizer_set_death_callback) {
        __sanitizer_set_death_callback(tellInput);
    } else {
        std::signal(SIGSEGV, failBySignal);
        std::signal(SIGBUS, failBySignal);
    }
}

std::string contents(const fs::path &file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void run(std::string input)
{
    current = std::move(input);
    alarm(patience);
    // A copy of the exact size, so that a sanitizer sees each byte that is read beyond it.
    const std::vector<std::uint8_t> bytes(current.begin(), current.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

std::vector<std::string> readCorpus(const fs::path &folder)
{
    std::vector<fs::path> files;
    for (const auto &entry : fs::directory_iterator(folder))
        files.push_back(entry.path());
    std::ranges::sort(files);
    std::vector<std::string> corpus;
    std::ranges::transform(files, std::back_inserter(corpus), contents);
    return corpus;
}

/// The lines "word" of a dictionary; a byte may be written as \x1f, quotes and backslashes behind a
/// backslash.
std::vector<std::string> readWords(const fs::path &dictionary)
{
    std::vector<std::string> words;
    std::ifstream stream(dictionary);
    for (std::string line; std::getline(stream, line);) {
        if (line.size() < 2 || line.front() != '"')
            continue;
        std::string word;
        for (std::size_t i = 1; i + 1 < line.size(); ++i) {
            if (line[i] == '\\' && line[i + 1] == 'x') {
                word.push_back(char(std::stoi(line.substr(i + 2, 2), nullptr, 16)));
                i += 3;
            } else {
                i += line[i] == '\\' ? 1 : 0;
                word.push_back(line[i]);
            }
        }
        words.push_back(word);
    }
    return words;
}

void fuzz(const fs::path &folder, std::uint64_t seed)
{
    const std::vector<std::string> corpus = readCorpus(folder);
    if (corpus.empty())
        throw std::runtime_error("the corpus is empty");
    for (const std::string &input : corpus)
        run(input);
    const bool isLong = std::getenv("BRINDLE_LONG") != nullptr;
    Mutator mutator(corpus, readWords(folder.string() + ".dict"), isLong ? seed + 1'000'000 : seed);
    const auto end = std::chrono::steady_clock::now() + longTime;
    std::size_t done = 0;
    const auto goesOn = [&] { return isLong ? std::chrono::steady_clock::now() < end : done < iterations; };
    for (; goesOn(); ++done)
        run(mutator.next());
    std::printf("%zu kept inputs and %zu mutations of them, seed %llu\n", corpus.size(), done,
        static_cast<unsigned long long>(seed));
}

} // namespace

int main(int argc, char **argv)
{
    program = argv[0];
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s CORPUS [SEED] | FILE\n", program);
        return 2;
    }
    watchForFailures();
    const fs::path path(argv[1]);
    if (fs::is_directory(path))
        fuzz(path, argc > 2 ? std::stoull(argv[2]) : 1);
    else
        run(contents(path));
    return 0;
}
