#pragma once

#include <QFont>
#include <QHash>
#include <QTransform>
#include <memory>
#include <vector>

#include "programs/reports/PdfLinks.h"

class QPaintDevice;
class QPainter;
class QTextBlock;
class QTextDocument;

QFont bookFont();

/// A calculation book broken into pages. The overview and each relay begin a page; no heading ends one.
class BookLayout {
  public:
    /// \param body    bookBody()
    /// \param device  on which it will be painted
    /// \param page    room for the text of a page, in dots of the device
    BookLayout(const QString& body, QPaintDevice& device, const QSizeF& page);
    ~BookLayout();

    [[nodiscard]] int pageCount() const;
    /// Paints a page; the entries of the contents get the pages of their relays.
    void paint(QPainter& painter, int page) const;
    /// \param toSheet  from the room of the text in dots to the sheet in points
    [[nodiscard]] PdfLinks links(const QTransform& toSheet) const;

  private:
    struct Stretch {
        int start, length;
        QString anchor;
    };
    struct Place {
        int page;
        double y;
    };
    struct Section {
        std::unique_ptr<QTextDocument> text;
        QVector<Stretch> links;
        int firstPage;
    };
    struct Area {
        int page;  // of the book
        QRectF dots;
        QString anchor;
    };
    void addSection(const QString& html, QPaintDevice& device);
    void placeHeadings();
    [[nodiscard]] QVector<Area> areas(const Section& section) const;
    void paintPageNumbers(QPainter& painter, int page) const;
    [[nodiscard]] Place place(const Section& section, const QTextBlock& block) const;

    QSizeF page_;
    std::vector<Section> sections_;
    QHash<QString, Place> anchors_;
    QHash<QString, int> chapters_;  // first pages of relays and overview, by anchor
};
