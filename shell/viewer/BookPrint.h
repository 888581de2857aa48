#pragma once

#include <QString>

class QPrinter;

namespace shell {

/// Prints a text in its cells, lines too long for the paper continued on the next; the title stands above and the
/// number of the page below each page. Honours the printer's range of pages. \return number of pages of the whole text
int printBook(const QString& title, const QString& text, QPrinter& printer);

}  // namespace shell
