#pragma once
// A report as Qt shows and prints it: the styled runs of the RTF reader in a
// QTextDocument, and that document printed page after page inside margins.
#include <string>

#include "presentation/report_services.h"
#include "presentation/rtf_reader.h"

class QPrinter;
class QTextDocument;

namespace tarnwick::desktop {

// Fills document with the paragraphs: bold, italic, underline, size, colour,
// font, alignment and tab stops (at 15 twips to the pixel).
void RenderReport(const RtfDocument& report, QTextDocument& document);

// Prints the report (RTF or plain text) on the printer inside the margins,
// as many pages as the text needs; returns the number of pages.
int PrintReportOn(QPrinter& printer, const std::string& report, const PageMargins& margins);

}  // namespace tarnwick::desktop
