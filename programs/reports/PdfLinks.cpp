#include "programs/reports/PdfLinks.h"

#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFWriter.hh>
#include <vector>

namespace {

using Object = QPDFObjectHandle;

class Linked {
  public:
    explicit Linked(const QByteArray& pdf) {
        pdf_.processMemoryFile("PDF", pdf.constData(), static_cast<size_t>(pdf.size()));
        pages_ = QPDFPageDocumentHelper(pdf_).getAllPages();
    }

    void addLinks(const QVector<PdfLink>& links) {
        for (const PdfLink& link : links) {
            Object note = pdf_.makeIndirectObject(Object::parse("<< /Type /Annot /Subtype /Link /Border [0 0 0] >>"));
            const double top = height(link.page);
            note.replaceKey("/Rect", Object::newArray(Object::Rectangle(link.area.left(), top - link.area.bottom(),
                                                                        link.area.right(), top - link.area.top())));
            note.replaceKey("/Dest", destination(link.target));
            Object page = sheet(link.page);
            if (!page.hasKey("/Annots")) page.replaceKey("/Annots", Object::newArray());
            page.getKey("/Annots").appendItem(note);
        }
    }

    void addOutline(const QVector<PdfBookmark>& bookmarks) {
        Object root = pdf_.makeIndirectObject(Object::parse("<< /Type /Outlines /Count 0 >>"));
        std::vector<Object> open{root};
        for (const PdfBookmark& bookmark : bookmarks) {
            open.resize(std::min(open.size(), static_cast<size_t>(bookmark.level) + 1), root);
            Object item = pdf_.makeIndirectObject(Object::newDictionary());
            item.replaceKey("/Title", Object::newUnicodeString(bookmark.title.toStdString()));
            item.replaceKey("/Dest", destination(bookmark.target));
            append(open.back(), item, open.size() == 1);
            open.push_back(item);
        }
        pdf_.getRoot().replaceKey("/Outlines", root);
        pdf_.getRoot().replaceKey("/PageMode", Object::newName("/UseOutlines"));
    }

    void setLanguage(const QString& language) {
        pdf_.getRoot().replaceKey("/Lang", Object::newUnicodeString(language.toStdString()));
        pdf_.getRoot().replaceKey("/ViewerPreferences", Object::parse("<< /DisplayDocTitle true >>"));
    }

    QByteArray bytes() {
        QPDFWriter writer(pdf_);
        writer.setOutputMemory();
        writer.setObjectStreamMode(qpdf_o_generate);
        writer.write();
        const auto buffer = writer.getBufferSharedPointer();
        return {reinterpret_cast<const char*>(buffer->getBuffer()), static_cast<qsizetype>(buffer->getSize())};
    }

  private:
    Object sheet(int page) { return pages_.at(static_cast<size_t>(page)).getObjectHandle(); }
    double height(int page) { return sheet(page).getKey("/MediaBox").getArrayAsRectangle().ury; }

    Object destination(const PdfPlace& place) {
        const double y = height(place.page) - place.y;
        return Object::newArray({sheet(place.page), Object::newName("/XYZ"), Object::newInteger(0),
                                 Object::newReal(y, 1), Object::newNull()});
    }

    /// The count of a closed item is negative; the root counts what is seen at first.
    static void append(Object parent, Object item, bool seen) {
        item.replaceKey("/Parent", parent);
        if (parent.hasKey("/Last")) {
            parent.getKey("/Last").replaceKey("/Next", item);
            item.replaceKey("/Prev", parent.getKey("/Last"));
        } else {
            parent.replaceKey("/First", item);
        }
        parent.replaceKey("/Last", item);
        const long long count = parent.hasKey("/Count") ? parent.getKey("/Count").getIntValue() : 0;
        parent.replaceKey("/Count", Object::newInteger(seen ? count + 1 : count - 1));
    }

    QPDF pdf_;
    std::vector<QPDFPageObjectHelper> pages_;
};

}  // namespace

QByteArray pdfWithLinks(const QByteArray& pdf, const PdfLinks& links, QString& fault) try {
    Linked linked(pdf);
    linked.addLinks(links.links);
    linked.addOutline(links.bookmarks);
    linked.setLanguage(links.language);
    return linked.bytes();
} catch (const std::exception& error) {
    fault = QString::fromUtf8(error.what());
    return {};
}
