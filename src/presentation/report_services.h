#pragma once
// The clipboard and the printer as the report windows use them. The
// desktop implements them on its toolkit; tests with fakes.
#include <optional>
#include <string>

namespace tarnwick {

class Clipboard {
 public:
  virtual ~Clipboard() = default;
  // Clears the clipboard and puts the plain text on it, with the RTF beside
  // it in the rich-text format when one is given. False, or an exception,
  // when the clipboard could not be written.
  virtual bool SetReport(const std::string& plainText, const std::optional<std::string>& rtf) = 0;
};

// Page margins in twips (1440 to the inch).
struct PageMargins {
  long left = 1440;
  long top = 1440;
  long right = 1440;
  long bottom = 1440;
  friend bool operator==(const PageMargins&, const PageMargins&) = default;
};

class ReportPrinter {
 public:
  virtual ~ReportPrinter() = default;
  // The printer dialog, with the default printer chosen; false when the
  // user cancels.
  virtual bool ShowPrinterDialog() = 0;
  // Prints the report (RTF, or plain text when it does not start with
  // "{\rtf") on the chosen printer inside the margins, page after page
  // until the text ends.
  virtual void PrintReport(const std::string& report, const PageMargins& margins) = 0;
};

}  // namespace tarnwick
