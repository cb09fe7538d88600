#include "presentation/rtf_text.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

TEST(RtfToPlainText, ReportSubset) {
  const std::string rtf =
      "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\fswiss Arial;}{\\f1 Courier New;}}"
      "{\\colortbl;\\red255\\green0\\blue0;}{\\*\\generator Writer 1.0;}\n"
      "\\pard\\fs20\\b Plot Layout Report\\b0\\par\n"
      "\\i Stands:\\i0\\tab 12\\line Plots:\\tab 340\\par\n"
      "Path: C:\\\\data\\\\plots \\{new\\}\\par\n"
      "Caf\\'e9 \\'93quoted\\'94 10\\~m \\u8364?5\\par}";
  EXPECT_EQ(RtfToPlainText(rtf),
            "Plot Layout Report\n"
            "Stands:\t12\nPlots:\t340\n"
            "Path: C:\\data\\plots {new}\n"
            "Caf\xC3\xA9 \xE2\x80\x9Cquoted\xE2\x80\x9D 10\xC2\xA0m \xE2\x82\xAC" "5\n");
}

TEST(RtfToPlainText, UnicodeFallbacksAndNegativeCodes) {
  // \uc2 makes two stand-in characters follow each \u; a hex escape counts
  // as one of them. Negative codes are taken modulo 65536.
  EXPECT_EQ(RtfToPlainText("{\\uc2\\u233 xx\\u-3913\\'3f?!}"), "\xC3\xA9\xEF\x82\xB7!");
  EXPECT_EQ(RtfToPlainText("{\\pard a\\par}{\\pard b}"), "a\nb");
}

}  // namespace
}  // namespace tarnwick
