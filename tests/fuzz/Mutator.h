#pragma once

#include <random>
#include <string>
#include <vector>

namespace brindle::fuzz {

/// Makes new inputs from kept ones and from words that the parser knows. The same seed gives the same inputs.
class Mutator
{
public:
    Mutator(std::vector<std::string> corpus, std::vector<std::string> words, std::uint64_t seed);

    std::string next();

private:
    void mutate(std::string &input);
    void replaceByte(std::string &input);
    void insertWord(std::string &input);
    void removeRange(std::string &input);
    void repeatRange(std::string &input);
    void splice(std::string &input);
    /// From 0 up to, not including, `end`, which is above 0.
    std::size_t below(std::size_t end);

    const std::vector<std::string> m_corpus;
    const std::vector<std::string> m_words;
    std::mt19937_64 m_random;
};

} // namespace brindle::fuzz
