#include "programs/reports/BookHtml.h"

#include <QSaveFile>

#include "platform/host/Text.h"
#include "programs/frame/Messages.h"
#include "programs/reports/BookPages.h"
#include "programs/reports/BookText.h"

namespace {

const char* const style = R"(
:root { color-scheme: light dark; --ink: #1c1f23; --soft: #5b6470; --line: #d5dae0; --shade: #f4f6f8; --paper: #ffffff;
  --accent: #0b5cad; --good: #0b5cad; }
@media (prefers-color-scheme: dark) {
  :root { --ink: #e6e8eb; --soft: #9aa4b0; --line: #3a424c; --shade: #23282e; --paper: #181b1f; --accent: #7db8f5;
    --good: #7db8f5; } }
body { margin: 0 auto; padding: 2rem 1.5rem 4rem; max-width: 68rem; background: var(--paper); color: var(--ink);
  font: 15px/1.6 "Noto Sans CJK SC", "Source Han Sans SC", "Microsoft YaHei", "PingFang SC", sans-serif; }
h1 { font-size: 1.7rem; margin: 0; }
h2 { font-size: 1.3rem; margin: 3rem 0 .5rem; padding-bottom: .3rem; border-bottom: 2px solid var(--accent); }
h3 { font-size: 1.1rem; margin: 1.8rem 0 .5rem; }
h4 { font-size: 1rem; margin: 1.6rem 0 .3rem; padding: .35rem .6rem; background: var(--shade);
  border-left: 3px solid var(--accent); }
h4 .number { color: var(--soft); font-weight: normal; white-space: pre; }
:target { outline: 2px solid var(--accent); outline-offset: 2px; }
p { margin: .35rem 0; }
p.facts, .none { color: var(--soft); }
p.result { padding-left: .6rem; }
p.result b { color: var(--good); }
a { color: var(--accent); text-decoration: none; }
a:hover, a:focus { text-decoration: underline; }
ul { margin: 0; padding-left: 1.2rem; }
code { font: .95em/1.6 "JetBrains Mono", Consolas, "Noto Sans Mono CJK SC", monospace; overflow-wrap: anywhere; }
.table { overflow-x: auto; margin: .5rem 0; }
table { border-collapse: collapse; font-size: .93em; }
th, td { padding: .3rem .8rem; border: 1px solid var(--line); text-align: left; vertical-align: top; }
th { background: var(--shade); font-weight: 600; white-space: nowrap; }
td.figure { text-align: right; white-space: nowrap; font-variant-numeric: tabular-nums; }
@media print {
  :root { color-scheme: light; --ink: #000; --soft: #444; --line: #999; --shade: #f0f0f0; --paper: #fff;
    --accent: #000; --good: #000; }
  body { max-width: none; padding: 0; font-size: 10pt; }
  h2 { break-before: page; } h2#contents, h2#overview { break-before: auto; }
  h3, h4 { break-after: avoid; } tr, p { break-inside: avoid; } thead { display: table-header-group; }
  .table { overflow: visible; }
}
)";

}  // namespace

std::optional<QByteArray> bookHtml(const BookRequest& request) {
    const auto pages = readBookPages(request);
    if (!pages) return std::nullopt;
    const QString title = bookTitle(request.sensitivity) + " " + request.caseName.toHtmlEscaped();
    return ("<!DOCTYPE html>\n<html lang=\"zh-CN\">\n<head>\n<meta charset=\"utf-8\"/>\n"
            "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n<title>" +
            title + "</title>\n<style>" + style + "</style>\n</head>\n<body>\n" +
            bookBody(*pages, QDateTime::currentDateTime()) + "</body>\n</html>\n")
        .toUtf8();
}

bool exportBookHtml(const BookRequest& request, const QString& file) {
    const auto page = bookHtml(request);
    if (!page) return false;
    QSaveFile out(file);
    if (out.open(QIODevice::WriteOnly) && out.write(*page) == page->size() && out.commit()) return true;
    ReportError(Text::tr("不能写文件 ") + file + "：" + out.errorString(), 0);
    return false;
}
