#include <gtest/gtest.h>

#include <QStringList>

#include "platform/host/WinDockFeedback.h"
#include "programs/frame/Messages.h"

TEST(Messages, LevelsChooseTheKindOfLineAndEmptyTextShowsNothing) {
    QStringList lines;
    WinDockFeedback::setReceiver(
        [&lines](const char* text, int level) { lines << QString::fromUtf8(text) + QString::number(level); });
    for (const int level : {0, 1, 2}) {
        ReportError("错误", level);
        ReportSuccess("完成", level);
        ReportError("", level);
        ReportSuccess("", level);
    }
    WinDockFeedback::setReceiver({});
    EXPECT_EQ(lines, QStringList({"错误3", "完成-1", "错误2", "完成-1"}));
}

TEST(Messages, AnUnknownLevelOnlyWarnsTheDeveloper) {
    static QString warning;
    WinDockFeedback::setReceiver([](const char*, int) { ADD_FAILURE() << "nothing for the dock"; });
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) { warning += text; });
    ReportError("甲", 3);
    ReportSuccess("乙", -1);
    qInstallMessageHandler(nullptr);
    WinDockFeedback::setReceiver({});
    EXPECT_EQ(warning, "无法处理的错误信息：甲无法处理的成功信息：乙");
}
