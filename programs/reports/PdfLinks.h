#pragma once

#include <QByteArray>
#include <QRectF>
#include <QString>
#include <QVector>

// What leads the reader of a PDF from one place to another. Lengths are points from the upper left corner of the sheet.

struct PdfPlace {
    int page = 0;  ///< from 0
    double y = 0;
};

struct PdfLink {
    int page = 0;
    QRectF area;
    PdfPlace target;
};

struct PdfBookmark {
    QString title;
    int level = 0;  ///< 0 the outermost; one deeper than the bookmark before at most
    PdfPlace target;
};

struct PdfLinks {
    QVector<PdfLink> links;
    QVector<PdfBookmark> bookmarks;  ///< in the order of the outline; those within another one are shown on demand
    QString language;                ///< of the text, "zh-CN"
};

/// Gives a PDF links and an outline (ISO 32000-1, 12.3.3 and 12.5.6.5), with which it opens.
/// \param fault  why there is none
/// \return empty when the PDF cannot be read or has not the pages that are linked
QByteArray pdfWithLinks(const QByteArray& pdf, const PdfLinks& links, QString& fault);
