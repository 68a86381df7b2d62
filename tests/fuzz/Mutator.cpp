#include "fuzz/Mutator.h"

#include <algorithm>

namespace brindle::fuzz {

namespace {

/// Longer inputs find nothing that shorter ones do not, and take longer.
constexpr std::size_t longest = 16'384;

} // namespace

Mutator::Mutator(std::vector<std::string> corpus, std::vector<std::string> words, std::uint64_t seed)
    : m_corpus(std::move(corpus))
    , m_words(std::move(words))
    , m_random(seed)
{ }

std::string Mutator::next()
{
    std::string input = m_corpus.at(below(m_corpus.size()));
    for (std::size_t left = below(8); left > 0; --left)
        mutate(input);
    input.resize(std::min(input.size(), longest));
    return input;
}

void Mutator::mutate(std::string &input)
{
    switch (below(5)) {
    case 0:
        return replaceByte(input);
    case 1:
        return insertWord(input);
    case 2:
        return removeRange(input);
    case 3:
        return repeatRange(input);
    default:
        return splice(input);
    }
}

void Mutator::replaceByte(std::string &input)
{
    if (input.empty())
        input.push_back(char(below(256)));
    else
        input.at(below(input.size())) = char(below(256));
}

void Mutator::insertWord(std::string &input)
{
    if (!m_words.empty())
        input.insert(below(input.size() + 1), m_words.at(below(m_words.size())));
}

void Mutator::removeRange(std::string &input)
{
    const std::size_t start = below(input.size() + 1);
    input.erase(start, below(input.size() - start + 1));
}

void Mutator::repeatRange(std::string &input)
{
    const std::size_t start = below(input.size() + 1);
    const std::string range = input.substr(start, below(std::min<std::size_t>(64, input.size() - start) + 1));
    for (std::size_t left = below(64); left > 0 && input.size() < longest; --left)
        input.insert(start, range);
}

// The start of this one and the end of another.
void Mutator::splice(std::string &input)
{
    const std::string &other = m_corpus.at(below(m_corpus.size()));
    input.resize(below(input.size() + 1));
    input.append(other, below(other.size() + 1), std::string::npos);
}

// By hand, since the library's distributions differ between platforms.
std::size_t Mutator::below(std::size_t end)
{
    return std::size_t(m_random() % end);
}

} // namespace brindle::fuzz
