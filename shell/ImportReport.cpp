#include "shell/ImportReport.h"

#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QStandardItemModel>
#include <QTreeView>
#include <QVBoxLayout>

#include "platform/host/WinDockFeedback.h"
#include "shell/Appearance.h"

namespace shell {

namespace {

using Kind = import::Finding::Kind;

int countOf(const import::Report& report, Kind kind) {
    int count = 0;
    for (const import::Finding& finding : report.findings)
        if (finding.kind == kind) ++count;
    return count;
}

QString iconOf(Kind kind) {
    if (kind == Kind::Suspicious || kind == Kind::Missing) return "warning";
    return "info";
}

}  // namespace

QVector<Kind> kindsByWeight() { return {Kind::Suspicious, Kind::Missing, Kind::Defaulted, Kind::Changed, Kind::Came}; }

QString kindName(Kind kind) {
    switch (kind) {
        case Kind::Came:
            return ImportReportPage::tr("读入");
        case Kind::Defaulted:
            return ImportReportPage::tr("取缺省值");
        case Kind::Missing:
            return ImportReportPage::tr("缺少");
        case Kind::Suspicious:
            return ImportReportPage::tr("可疑");
        default:
            return ImportReportPage::tr("改动");
    }
}

QString reportAsText(const import::Report& report, const QString& title) {
    QString text = title + "\n";
    for (const Kind kind : kindsByWeight()) {
        if (countOf(report, kind) == 0) continue;
        text += "\n" + kindName(kind) + " (" + QString::number(countOf(report, kind)) + ")\n";
        for (const import::Finding& finding : report.findings)
            if (finding.kind == kind)
                text += "  " + QString::fromStdString(finding.subject) + "\t" + QString::number(finding.count) + "\t" +
                        QString::fromStdString(finding.text) + "\n";
    }
    return text;
}

QString reportAsHtml(const import::Report& report, const QString& title) {
    const QString name = title.toHtmlEscaped();
    QString text = "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>" + name +
                   "</title><style>body{font-family:sans-serif;margin:2em}td,th{padding:2px 10px;text-align:left;"
                   "vertical-align:top;border-bottom:1px solid #ccc}td.n{text-align:right}</style></head><body>\n<h1>" +
                   name + "</h1>\n";
    for (const Kind kind : kindsByWeight()) {
        if (countOf(report, kind) == 0) continue;
        text += "<h2>" + kindName(kind) + " (" + QString::number(countOf(report, kind)) + ")</h2>\n<table><tr><th>" +
                ImportReportPage::tr("对象") + "</th><th>" + ImportReportPage::tr("数量") + "</th><th>" +
                ImportReportPage::tr("说明") + "</th></tr>\n";
        for (const import::Finding& finding : report.findings)
            if (finding.kind == kind)
                text += "<tr><td>" + QString::fromStdString(finding.subject).toHtmlEscaped() + "</td><td class=\"n\">" +
                        QString::number(finding.count) + "</td><td>" +
                        QString::fromStdString(finding.text).toHtmlEscaped() + "</td></tr>\n";
        text += "</table>\n";
    }
    return text + "</body></html>\n";
}

ImportReportPage::ImportReportPage(QWidget* parent) : QWidget(parent) {
    setObjectName("importReport");
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    summary_ = new QLabel(this);
    summary_->setWordWrap(true);
    auto* bar = new QHBoxLayout;
    filter_ = new QLineEdit(this);
    filter_->setObjectName("lineEdit_Filter");
    filter_->setClearButtonEnabled(true);
    filter_->setPlaceholderText(tr("只显示含有这段文字的行"));
    auto* save = new QPushButton(icon("save"), tr("保存报告…"), this);
    save->setObjectName("pushButton_Save");
    save->setAutoDefault(false);
    bar->addWidget(filter_, 1);
    bar->addWidget(save);
    model_ = new QStandardItemModel(this);
    shown_ = new QSortFilterProxyModel(this);
    shown_->setSourceModel(model_);
    shown_->setRecursiveFilteringEnabled(true);
    shown_->setAutoAcceptChildRows(false);
    shown_->setFilterKeyColumn(-1);
    shown_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    view_ = new QTreeView(this);
    view_->setObjectName("treeView_Report");
    view_->setModel(shown_);
    view_->setAlternatingRowColors(true);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    rows->addWidget(summary_);
    rows->addLayout(bar);
    rows->addWidget(view_, 1);
    connect(save, &QPushButton::clicked, this, &ImportReportPage::save);
    connect(filter_, &QLineEdit::textChanged, this, [this](const QString& text) {
        shown_->setFilterFixedString(text);
        view_->expandAll();
    });
}

void ImportReportPage::show(const import::Report& report, const QString& title) {
    report_ = report;
    title_ = title;
    QStringList counts;
    for (const Kind kind : kindsByWeight())
        counts.append(kindName(kind) + " " + QString::number(countOf(report, kind)));
    summary_->setText("<b>" + title.toHtmlEscaped() + "</b><br>" + counts.join(" · "));
    fill();
}

void ImportReportPage::fill() {
    model_->clear();
    model_->setHorizontalHeaderLabels({tr("对象"), tr("数量"), tr("说明")});
    for (const Kind kind : kindsByWeight()) {
        if (countOf(report_, kind) == 0) continue;
        auto* group = new QStandardItem(icon(iconOf(kind)), kindName(kind));
        auto* total = new QStandardItem(QString::number(countOf(report_, kind)));
        total->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        model_->appendRow({group, total, new QStandardItem});
        for (const import::Finding& finding : report_.findings) {
            if (finding.kind != kind) continue;
            auto* count = new QStandardItem(QString::number(finding.count));
            count->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            auto* text = new QStandardItem(QString::fromStdString(finding.text));
            text->setToolTip(text->text());
            group->appendRow({new QStandardItem(QString::fromStdString(finding.subject)), count, text});
        }
    }
    view_->expandAll();
    view_->resizeColumnToContents(0);
    view_->resizeColumnToContents(1);
}

void ImportReportPage::save() {
    const QString file =
        QFileDialog::getSaveFileName(this, tr("保存导入报告"), title_ + ".html", tr("网页 (*.html);;文本文件 (*.txt)"));
    if (!file.isEmpty()) saveAs(file);
}

bool ImportReportPage::saveAs(const QString& file) const {
    const bool page = file.endsWith(".html", Qt::CaseInsensitive) || file.endsWith(".htm", Qt::CaseInsensitive);
    const QString text = page ? reportAsHtml(report_, title_) : reportAsText(report_, title_);
    QSaveFile out(file);
    if (out.open(QIODevice::WriteOnly) && out.write(text.toUtf8()) >= 0 && out.commit()) return true;
    const QString reason = tr("不能写文件%1：%2").arg(file, out.errorString());
    WinDockFeedback::ShowMessage(reason.toUtf8().constData(), "", "", "", WinDockFeedback::Error);
    return false;
}

}  // namespace shell
