#pragma once
// Turning any wished text into a field or output name that the target store
// accepts and that does not clash with existing names. Comparisons ignore
// case; results keep the letter case of the input.
#include <string>
#include <vector>

namespace tarnwick {

// A legal name for a shapefile (dbase), personal database or INFO table,
// or else a general store: length limits 10, 52, 16 and 64. existing may
// be null. name is set to the result too.
std::string ReturnAcceptableFieldName(std::string& name, const std::vector<std::string>* existing, bool dbase,
                                      bool personalGdb, bool info);

// A legal dBASE column name of at most 10 characters. name is set to the
// result too.
std::string ReturnDBASEFieldName(std::string& name, const std::vector<std::string>* existing);

// A legal file-geodatabase field name: reserved words gain "_", clashes
// gain "_2", "_3", ...
std::string ReturnValidFGDBFieldName(const std::string& name, const std::vector<std::string>* existing);

// Replaces characters outside letters, digits and "_" (and ".", "\" and
// blank unless asked to replace them) by "_"; "z" for an empty text, and in
// front of a first character that is no letter when firstLetter is set.
std::string ReplaceBadChars(const std::string& name, bool replaceDot, bool replaceBackslash, bool replaceBlank,
                            bool firstLetter);

}  // namespace tarnwick
