// What the fuzzers hold over millions of inputs, on their seeds and on some thousand inputs made
// from them: the same ones in each run.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <random>
#include <string>
#include <vector>

// Each fuzzer's entry, under the name of its source.
extern "C" {
int command_line_fuzzer(const std::uint8_t* data, std::size_t size);
int drop_files_fuzzer(const std::uint8_t* data, std::size_t size);
int file_dialog_fuzzer(const std::uint8_t* data, std::size_t size);
int leading_number_fuzzer(const std::uint8_t* data, std::size_t size);
int listed_names_fuzzer(const std::uint8_t* data, std::size_t size);
int options_fuzzer(const std::uint8_t* data, std::size_t size);
int placement_fuzzer(const std::uint8_t* data, std::size_t size);
int shell_item_ids_fuzzer(const std::uint8_t* data, std::size_t size);
int truth_value_fuzzer(const std::uint8_t* data, std::size_t size);
}

namespace tidemark {
namespace {

struct Fuzzer {
    const char* name;
    int (*run)(const std::uint8_t* data, std::size_t size);
};
std::ostream& operator<<(std::ostream& out, const Fuzzer& fuzzer) {
    return out << fuzzer.name;
}

using Input = std::vector<std::uint8_t>;

std::vector<Input> Seeds() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(TIDEMARK_FUZZ_SEEDS)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    std::vector<Input> seeds = {{}};
    for (const auto& file : files) {
        std::ifstream in(file, std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    return seeds;
}

// Makes inputs from the seeds; the same ones from the same number.
class Mutator {
  public:
    Mutator(const std::vector<Input>& seeds, std::uint32_t number)
        : seeds_(seeds), random_(number) {}

    Input Next() {
        Input input = AnySeed();
        for (std::size_t changes = 1 + Below(6); changes > 0; --changes) {
            Change(input);
        }
        return input;
    }

  private:
    std::size_t Below(std::size_t end) { return random_() % end; }
    const Input& AnySeed() { return seeds_[Below(seeds_.size())]; }
    static Input::difference_type Offset(std::size_t at) {
        return static_cast<Input::difference_type>(at);
    }
    // Those that mean something to a reader, and any other.
    std::uint8_t AnyByte() {
        static const std::string kTelling("\0\0\0\1\2\x14 ,\"\\\t+-.eE05&hHT\x7F\x80\xD8\xDC\xFF",
                                          27);
        return static_cast<std::uint8_t>(Below(3) == 0 ? Below(256)
                                                       : kTelling[Below(kTelling.size())]);
    }

    void Change(Input& input) {
        const std::size_t at = Below(input.size() + 1);
        const std::size_t some = std::min(input.size() - at, Below(8));
        switch (Below(6)) {
            case 0:
                input.insert(input.begin() + Offset(at), AnyByte());
                break;
            case 1:
                if (at < input.size()) {
                    input[at] = AnyByte();
                }
                break;
            case 2:
                input.erase(input.begin() + Offset(at), input.begin() + Offset(at + some));
                break;
            case 3: {
                const Input piece(input.begin() + Offset(at), input.begin() + Offset(at + some));
                input.insert(input.end(), piece.begin(), piece.end());
                break;
            }
            case 4: {
                const Input& other = AnySeed();
                input.insert(input.begin() + Offset(at), other.begin(), other.end());
                break;
            }
            default:
                input.resize(at);
        }
    }

    const std::vector<Input>& seeds_;
    std::mt19937 random_;
};

std::string InHexadecimal(const Input& input) {
    constexpr const char* kDigits = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : input) {
        text += kDigits[byte / 16];
        text += kDigits[byte % 16];
    }
    return text;
}

class FuzzReplayTest : public testing::TestWithParam<Fuzzer> {
  protected:
    static void Replay(const Input& input) {
        // A copy takes memory of just its size, so that a reader that leaves it is caught.
        const Input exact(input);
        try {
            GetParam().run(exact.data(), exact.size());
        } catch (const std::exception& broken) {
            ADD_FAILURE() << broken.what() << "\nby the input " << InHexadecimal(input);
        }
    }
};

TEST_P(FuzzReplayTest, HoldsItsPromisesOnTheSeedsAndOnMutationsOfThem) {
    constexpr int kMutations = 3000;
    const std::vector<Input> seeds = Seeds();
    ASSERT_GE(seeds.size(), 22U);
    for (const Input& seed : seeds) {
        Replay(seed);
    }
    Mutator mutator(seeds, /*number=*/1);
    for (int i = 0; i < kMutations && !HasFailure(); ++i) {
        Replay(mutator.Next());
    }
}

INSTANTIATE_TEST_SUITE_P(Fuzzers, FuzzReplayTest,
                         testing::Values(Fuzzer{"CommandLine", command_line_fuzzer},
                                         Fuzzer{"DropFiles", drop_files_fuzzer},
                                         Fuzzer{"FileDialog", file_dialog_fuzzer},
                                         Fuzzer{"LeadingNumber", leading_number_fuzzer},
                                         Fuzzer{"ListedNames", listed_names_fuzzer},
                                         Fuzzer{"Options", options_fuzzer},
                                         Fuzzer{"Placement", placement_fuzzer},
                                         Fuzzer{"ShellItemIds", shell_item_ids_fuzzer},
                                         Fuzzer{"TruthValue", truth_value_fuzzer}),
                         testing::PrintToStringParamName());

}  // namespace
}  // namespace tidemark
