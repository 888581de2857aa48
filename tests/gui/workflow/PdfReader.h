#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QRectF>
#include <QStandardPaths>
#include <QVector>
#include <QXmlStreamReader>
#include <algorithm>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFOutlineDocumentHelper.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>

/// A PDF read back: its outline and links, and where its words stand. Lengths are points from a sheet's upper left.
struct PdfReader {
    struct Place {
        int page = -1;
        double y = 0;
        bool operator==(const Place&) const = default;
    };
    struct Heading {
        QString title;
        int level;
        Place at;
    };
    struct Link {
        int page;
        QRectF area;
        Place target;
    };
    struct Word {
        QRectF area;
        QString text;
    };
    QVector<Heading> outline;
    QVector<Link> links;
    QVector<QVector<Word>> words;  // by page; none without the program that reads them
    int fonts = 0, embedded = 0;
    bool whole = false;  // read without a warning

    explicit PdfReader(const QString& file) {
        pdf.setSuppressWarnings(true);
        pdf.processFile(QFile::encodeName(file).constData());
        pages = QPDFPageDocumentHelper(pdf).getAllPages();
        readOutline(QPDFOutlineDocumentHelper(pdf).getTopLevelOutlines(), 0);
        for (size_t page = 0; page < pages.size(); ++page) readLinks(static_cast<int>(page));
        for (auto& object : pdf.getAllObjects()) countFont(object);
        readWords(file);
        whole = pdf.getWarnings().empty();
    }

    [[nodiscard]] int pageCount() const { return static_cast<int>(pages.size()); }
    QPDFObjectHandle root() { return pdf.getRoot(); }
    /// What stands within an area, without blanks.
    [[nodiscard]] QString textIn(int page, const QRectF& area) const {
        QString text;
        for (const Word& word : words.at(page))
            if (area.contains(word.area.center())) text += word.text;
        return text;
    }
    [[nodiscard]] const Heading* headingAt(const Place& place) const {
        const auto found =
            std::find_if(outline.begin(), outline.end(), [&](const auto& heading) { return heading.at == place; });
        return found == outline.end() ? nullptr : &*found;
    }

  private:
    static QString plain(const QString& text) { return text.normalized(QString::NormalizationForm_KC); }

    Place placeOf(QPDFObjectHandle destination) {
        if (!destination.isArray() || destination.getArrayNItems() != 5) return {};
        for (size_t page = 0; page < pages.size(); ++page) {
            const auto sheet = pages[page].getObjectHandle();
            if (sheet.getObjGen() == destination.getArrayItem(0).getObjGen())
                return {static_cast<int>(page),
                        height(static_cast<int>(page)) - destination.getArrayItem(3).getNumericValue()};
        }
        return {};
    }
    double height(int page) {
        return pages[static_cast<size_t>(page)].getObjectHandle().getKey("/MediaBox").getArrayAsRectangle().ury;
    }
    void readOutline(const std::vector<QPDFOutlineObjectHelper>& items, int level) {
        for (auto item : items) {
            outline.append({QString::fromStdString(item.getTitle()), level, placeOf(item.getDest())});
            readOutline(item.getKids(), level + 1);
        }
    }
    void readLinks(int page) {
        for (auto& note : pages[static_cast<size_t>(page)].getAnnotations("/Link")) {
            const auto area = note.getRect();
            const QRectF upright(QPointF(area.llx, height(page) - area.ury),
                                 QPointF(area.urx, height(page) - area.lly));
            links.append({page, upright, placeOf(note.getObjectHandle().getKey("/Dest"))});
        }
    }
    void countFont(QPDFObjectHandle object) {
        if (!object.isDictionaryOfType("/FontDescriptor")) return;
        ++fonts;
        for (const char* key : {"/FontFile", "/FontFile2", "/FontFile3"}) embedded += object.hasKey(key);
    }
    void readWords(const QString& file) {
        const QString reader = QStandardPaths::findExecutable("pdftotext");
        if (reader.isEmpty()) return;
        QProcess process;
        process.start(reader, {"-bbox", file, "-"});
        ASSERT_TRUE(process.waitForFinished(120000));
        QXmlStreamReader xml(process.readAllStandardOutput());
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement) continue;
            if (xml.name() == QString("page")) words.append(QVector<Word>());
            if (xml.name() != QString("word")) continue;
            const auto at = [&](const char* name) { return xml.attributes().value(name).toDouble(); };
            const QRectF area(QPointF(at("xMin"), at("yMin")), QPointF(at("xMax"), at("yMax")));
            words.last().append({area, plain(xml.readElementText())});
        }
        EXPECT_EQ(words.size(), pageCount()) << xml.errorString().toStdString();
    }

    QPDF pdf;
    std::vector<QPDFPageObjectHelper> pages;
};
