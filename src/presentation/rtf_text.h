#pragma once
// Renders the RTF subset the reports use (groups, \par, \line, \tab, \b, \i,
// \ul, \fs, font and colour tables, \'hh and \uN escapes) to plain text for
// the terminal.
#include <string>
#include <string_view>

namespace tarnwick {

std::string RtfToPlainText(std::string_view rtf);

}  // namespace tarnwick
