#pragma once
// The plain text of an RTF report, for the terminal: paragraphs end with
// "\n", tabs and line breaks are kept, formatting is dropped.
#include <string>
#include <string_view>

namespace tarnwick {

std::string RtfToPlainText(std::string_view rtf);

}  // namespace tarnwick
