// A page of tables and charts as one file of HTML that is made for printing.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "host/files/svg_chart.h"
#include "host/files/table.h"

namespace qorhost {

/// What stands below the title: "Unit", "2, Linden Park".
struct PageFact {
  std::string name;
  std::string text;
};

/// Charts, and a table below them. Without columns there is no table.
struct PageSection {
  std::string heading{};  ///< above all of it; may be empty
  std::vector<SvgChart> charts{};
  std::string caption{};  ///< of the table
  Table table{};
};

struct HtmlPage {
  std::string title;
  std::string foot;  ///< of each sheet, and what a window is called: title and facts in one line
  std::vector<PageFact> facts;
  std::vector<PageSection> sections;
};

/// The whole page: no script, nothing from elsewhere, every text escaped. Printed, the heads of its
/// tables stand on each sheet, no row is broken over two, and the foot with the
/// sheet's number below them, where the browser can. It lies upright or across and is written the
/// smaller, the more its widest table has in a row. Cells are written as CSV has them; columns of
/// numbers stand to the right. Takes time linear in the cells.
void PrintHtml(std::ostream& out, const HtmlPage& page);

}  // namespace qorhost
