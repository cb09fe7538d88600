// Numbers and number pairs as typed on the command line, through the same
// readers and checks the subcommands use.
#include <cstddef>
#include <cstdint>
#include <string>

#include "argument_checks.h"
#include "usage_error.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  using namespace tarnwick;
  if (const auto number = ParseNumber(text)) NumberProblem(*number, {});
  ParseWholeNumber(text);
  SplitPair(text, ',');
  NumberLimits positive;
  positive.low = 0;
  positive.lowIncluded = false;
  try {
    cli::NumberArgument("--buffer", text, "the buffer distance", positive);
  } catch (const cli::UsageError&) {
  }
  try {
    cli::WholeNumberArgument("--plots", text, "the number of plots", 0, 50'000'000);
  } catch (const cli::UsageError&) {
  }
  for (const char separator : {',', ':'}) {
    try {
      cli::NumberPairArgument("--spacing", text, separator, "the X spacing", "the Y spacing", positive);
    } catch (const cli::UsageError&) {
    }
  }
  return 0;
}
