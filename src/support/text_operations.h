#pragma once
// Text cutting used everywhere: splitting, the text before or after a
// marker, replacing, and trimming chosen characters from the ends.
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

// Splits text by separator into trimmed pieces. A text that is blank once
// the separators are taken out gives one empty piece.
std::vector<std::string> ParseString(std::string_view text, std::string_view separator);

// The text before (After: behind) the first exact occurrence of marker; an
// empty text when the marker is absent.
std::string Before(std::string_view text, std::string_view marker);
std::string After(std::string_view text, std::string_view marker);

// Replaces every occurrence of search by replacement (removes them when the
// replacement is left out).
std::string Subst(std::string_view text, std::string_view search, std::string_view replacement = {});

// Cuts the last character while it is one of rightCharacters, then the first
// while it is one of leftCharacters.
std::string BasicTrimAvenue(std::string_view text, std::string_view leftCharacters,
                            std::string_view rightCharacters);

// Blanks trimmed from both ends (the host's Trim: spaces only).
std::string TrimBlanks(std::string_view text);

// Case-insensitive (ASCII) comparison of two names.
bool EqualsIgnoreCase(std::string_view a, std::string_view b);
std::string ToLowerAscii(std::string_view text);

}  // namespace tarnwick
