#include "programs/reports/BookViewer.h"
#include "tests/gui/workflow/WorkflowWindows.h"

TEST_F(WorkflowWindows, ABookIsShownByTheViewerOrTheReasonIsTold) {
    const QString book = folder.path() + "/作业 'a' 的书.ROT";
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nowhere");
    EXPECT_FALSE(showBook(book, folder.path()));
    EXPECT_EQ(said(), "生成计算书失败");
    qputenv("PATH", path);

    QFile viewer(folder.path() + "/NotePad");
    ASSERT_TRUE(viewer.open(QIODevice::WriteOnly));
    viewer.write("#!/bin/sh\necho \"$#:$1\" > \"$0.given\"\n");
    viewer.close();
    viewer.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    ASSERT_TRUE(showBook(book, folder.path()));
    QFile given(viewer.fileName() + ".given");
    ASSERT_TRUE(waitFor([&] { return given.exists() && given.size() > 0; }));
    ASSERT_TRUE(given.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(given.readAll()), "1:" + book + "\n");
    EXPECT_EQ(said(), "");
}
