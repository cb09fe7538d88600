#include "support/field_names.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

#include "errors/error_road.h"
#include "support/text_operations.h"

namespace tarnwick {
namespace {
constexpr std::string_view kModule = "MyGeneralOperations";
constexpr std::size_t kDbaseLimit = 10;

struct ReservedName {
  std::string_view name;
  std::string_view general;
  std::string_view dbase;
};

constexpr std::array<ReservedName, 17> kReservedNames{{
    {"date", "z_Date", "z_Date"},
    {"day", "z_Day", "z_Day"},
    {"month", "z_Month", "z_Month"},
    {"table", "z_Table", "z_Table"},
    {"text", "z_Text", "z_Text"},
    {"user", "z_User", "z_User"},
    {"when", "z_When", "z_When"},
    {"where", "z_Where", "z_Where"},
    {"year", "z_Year", "z_Year"},
    {"zone", "z_Zone", "z_Zone"},
    {"Shape_Length", "z_Shape_Length", "zShape_Len"},
    {"Shape_Area", "z_Shape_Area", "zShapeArea"},
    {"OID", "z_OID", "z_OID"},
    {"FID", "z_FID", "z_FID"},
    {"Object_ID", "z_Object_ID", "z_ObjectID"},
    {"Shape", "z_Shape", "z_Shape"},
    {"ObjectID", "z_ObjectID", "z_ObjectID"},
}};

constexpr std::array<std::string_view, 31> kFgdbReservedWords{
    "Add",    "ALTER", "AND",  "AS",     "Asc",    "BETWEEN", "BY",    "Column", "Create", "Date",  "DELETE",
    "DESC",   "DROP",  "Exists", "FOR",  "From",   "IN",      "Insert", "INTO",  "IS",     "LIKE",  "NOT",
    "Null",   "OR",    "Order", "SELECT", "SET",   "Table",   "Update", "Values", "WHERE"};

bool IsLetter(unsigned char c) { return c < 128 && std::isalpha(c); }
bool IsDigit(unsigned char c) { return c < 128 && std::isdigit(c); }
bool IsWordChar(unsigned char c) { return IsLetter(c) || IsDigit(c) || c == '_'; }

// Length of the UTF-8 sequence that starts with lead (1 for a stray byte),
// so that one typed character is replaced by one "_".
std::size_t SequenceLength(const std::string& s, std::size_t at) {
  const auto lead = static_cast<unsigned char>(s[at]);
  std::size_t n = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
  for (std::size_t k = 1; k < n; ++k) {
    if (at + k >= s.size() || (static_cast<unsigned char>(s[at + k]) & 0xC0) != 0x80) return 1;
  }
  return n;
}

template <class Keep>
std::string ReplaceOutside(const std::string& name, const Keep& keep) {
  std::string out;
  for (std::size_t i = 0; i < name.size();) {
    const auto c = static_cast<unsigned char>(name[i]);
    if (keep(c)) {
      out += name[i];
      ++i;
    } else {
      out += '_';
      i += SequenceLength(name, i);
    }
  }
  return out;
}

bool IsTaken(const std::string& name, const std::vector<std::string>& existing) {
  return std::any_of(existing.begin(), existing.end(),
                     [&](const std::string& e) { return EqualsIgnoreCase(e, name); });
}

// Steps shared by the general and the dBASE rule.
std::string LegalName(const std::string& wished, const std::vector<std::string>* existing, std::size_t limit,
                      bool dbase) {
  std::string name = TrimBlanks(wished).empty() ? std::string("z_Field") : wished;
  for (const auto& reserved : kReservedNames) {
    if (EqualsIgnoreCase(name, reserved.name)) {
      name = std::string(dbase ? reserved.dbase : reserved.general);
      break;
    }
  }
  if (name.size() > limit) name.resize(limit);
  if (!IsLetter(static_cast<unsigned char>(name.front()))) {
    name.insert(0, 1, 'z');
    if (name.size() > limit) name.resize(limit);
  }
  name = ReplaceOutside(name, IsWordChar);
  if (existing && IsTaken(name, *existing)) {
    const std::string stem = name;
    for (long n = 1;; ++n) {
      const std::string number = std::to_string(n);
      const std::size_t keep = limit > number.size() ? limit - number.size() : 0;
      name = stem.substr(0, keep) + number;
      if (!IsTaken(name, *existing)) break;
    }
  }
  return name;
}
}  // namespace

std::string ReturnAcceptableFieldName(std::string& name, const std::vector<std::string>* existing, bool dbase,
                                      bool personalGdb, bool info) {
  return Guarded("ReturnAcceptableFieldName", kModule, [&] {
    if (dbase) return ReturnDBASEFieldName(name, existing);
    const std::size_t limit = info ? 16 : personalGdb ? 52 : 64;
    name = LegalName(name, existing, limit, false);
    return name;
  });
}

std::string ReturnDBASEFieldName(std::string& name, const std::vector<std::string>* existing) {
  return Guarded("ReturnDBASEFieldName", kModule, [&] {
    name = LegalName(name, existing, kDbaseLimit, true);
    return name;
  });
}

std::string ReturnValidFGDBFieldName(const std::string& wished, const std::vector<std::string>* existing) {
  return Guarded("ReturnValidFGDBFieldName", kModule, [&] {
    std::string name = ReplaceOutside(wished, IsWordChar);
    if (!name.empty() && IsDigit(static_cast<unsigned char>(name.front()))) name.insert(0, 1, 'z');
    for (auto word : kFgdbReservedWords) {
      if (EqualsIgnoreCase(name, word)) {
        name += '_';
        break;
      }
    }
    if (existing && IsTaken(name, *existing)) {
      const std::string stem = name;
      for (long n = 2;; ++n) {
        name = stem + "_" + std::to_string(n);
        if (!IsTaken(name, *existing)) break;
      }
    }
    return name;
  });
}

std::string ReplaceBadChars(const std::string& name, bool replaceDot, bool replaceBackslash, bool replaceBlank,
                            bool firstLetter) {
  return Guarded("ReplaceBadChars", kModule, [&] {
    if (name.empty()) return std::string("z");
    std::string out = ReplaceOutside(name, [&](unsigned char c) {
      return IsWordChar(c) || (!replaceDot && c == '.') || (!replaceBackslash && c == '\\') ||
             (!replaceBlank && c == ' ');
    });
    if (firstLetter && !IsLetter(static_cast<unsigned char>(out.front()))) out.insert(0, 1, 'z');
    return out;
  });
}

}  // namespace tarnwick
