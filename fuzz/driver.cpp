// A small fuzzing driver for compilers that bring none. Understands the options that scripts/run-fuzz gives.
//
// Every file of the corpus folders is run as it stands, and cut at every octet where it has no more than -max_cut
// octets; then, until SIGUSR1 comes, one of them is damaged at random and run. Without coverage feedback this finds
// less than a guided fuzzer, but a reader that trusts a length or a count falls over within seconds. The input that
// brought the process down is written to a file.
#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size);
extern "C" void __sanitizer_set_death_callback(void (*callback)());

namespace {

using Octets = std::vector<std::uint8_t>;

struct Options
{
    unsigned timeout = 10;
    std::size_t max_cut = 512;
    std::string found = "found-";
    std::vector<Octets> corpus;
};

/// The input in progress, for the moment when the process goes down under it.
Octets current;
std::string found_prefix;
volatile std::sig_atomic_t is_at_end = 0;

void keepCurrent()
{
    std::string const name = found_prefix + std::to_string(getpid());
    std::ofstream(name, std::ios::binary)
        .write(reinterpret_cast<char const *>(current.data()), static_cast<std::streamsize>(current.size()));
    std::fprintf(stderr, "fuzz: the input is kept in %s\n", name.c_str());
}

void onTimeout(int)
{
    std::fprintf(stderr, "fuzz: one input took too long\n");
    keepCurrent();
    std::_Exit(1);
}

Octets readFile(std::filesystem::path const & path)
{
    std::ifstream file(path, std::ios::binary);
    return Octets(std::istreambuf_iterator<char>(file), {});
}

Options parse(int count, char ** arguments)
{
    Options options;
    for (int i = 1; i < count; i++) {
        std::string_view const text = arguments[i];
        auto const value = std::string(text.substr(std::min(text.find('=') + 1, text.size())));
        if (text.starts_with("-timeout="))
            options.timeout = static_cast<unsigned>(std::stoi(value));
        else if (text.starts_with("-max_cut="))
            options.max_cut = std::stoul(value);
        else if (text.starts_with("-artifact_prefix="))
            options.found = value;
        else if (std::filesystem::is_directory(text)) {
            for (auto const & entry : std::filesystem::directory_iterator(text))
                options.corpus.push_back(readFile(entry.path()));
        } else if (std::filesystem::is_regular_file(text))
            options.corpus.push_back(readFile(text));
    }
    if (options.corpus.empty())
        options.corpus.push_back({});
    return options;
}

/// Damages inputs in the ways in which files are damaged, and in the ways in which readers are fooled.
class Mutator
{
public:
    explicit Mutator(std::vector<Octets> const & corpus) : corpus(corpus) {}

    Octets next()
    {
        Octets octets = corpus[below(corpus.size())];
        for (auto rounds = 1 + below(4); rounds > 0; rounds--)
            damage(octets);
        return octets;
    }

private:
    std::size_t below(std::size_t n)
    {
        return n == 0 ? 0 : std::uniform_int_distribution<std::size_t>(0, n - 1)(random);
    }

    void damage(Octets & octets)
    {
        static constexpr std::uint8_t TELLING[] = {0, 1, 0x7f, 0x80, 0xff, '0', '9', '-', ',', ':', '%'};
        auto const at = below(octets.size());
        auto const length = std::min(1 + below(16), octets.size() - at);
        auto const place = octets.begin() + static_cast<std::ptrdiff_t>(at);
        auto const end = place + static_cast<std::ptrdiff_t>(length);
        switch (octets.empty() ? 4 : below(7)) {
        case 0:
            *place = static_cast<std::uint8_t>(*place ^ (1U << below(8)));
            break;
        case 1:
            *place = TELLING[below(std::size(TELLING))];
            break;
        case 2:
            std::fill(place, end, TELLING[below(5)]);
            break;
        case 3:
            octets.erase(place, end);
            break;
        case 4:
            octets.insert(place, 1 + below(8), TELLING[below(std::size(TELLING))]);
            break;
        case 5:
            octets.resize(at);
            break;
        default:
            splice(octets, at);
            break;
        }
    }

    /// Continues with the rest of another input.
    void splice(Octets & octets, std::size_t at)
    {
        auto const & other = corpus[below(corpus.size())];
        octets.resize(at);
        octets.insert(octets.end(), other.begin() + static_cast<std::ptrdiff_t>(below(other.size())),
                      other.end());
    }

    std::vector<Octets> const & corpus;
    std::mt19937_64 random{std::random_device{}()};
};

void run(Octets octets, unsigned timeout)
{
    current = std::move(octets);
    alarm(timeout);
    LLVMFuzzerTestOneInput(current.data(), current.size());
    alarm(0);
}

} // namespace

int main(int count, char ** arguments)
{
    Options const options = parse(count, arguments);
    found_prefix = options.found;
    __sanitizer_set_death_callback(keepCurrent);
    std::signal(SIGALRM, onTimeout);
    std::signal(SIGUSR1, [](int) { is_at_end = 1; });

    std::size_t cuts = 0;
    for (auto const & octets : options.corpus) {
        run(octets, options.timeout);
        if (octets.size() > options.max_cut)
            continue;
        for (auto end = octets.begin(); end != octets.end(); ++end, ++cuts)
            run({octets.begin(), end}, options.timeout);
    }

    Mutator mutator(options.corpus);
    long runs = 0;
    for (; is_at_end == 0; runs++)
        run(mutator.next(), options.timeout);
    std::fprintf(stderr, "%zu inputs of the corpus, %zu cut ones and %ld damaged ones, nothing found\n",
                 options.corpus.size(), cuts, runs);
}
