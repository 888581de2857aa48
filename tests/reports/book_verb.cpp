#include "platform/sql/Sql.h"
#include "tests/flow/CommandLine.h"

namespace {

using testing::HasSubstr;
using testing::Not;

class BookVerb : public DemoProject {
  protected:
    static Answer book(const QStringList& words) { return call(QStringList{"book", name} + words); }
};

TEST_F(BookVerb, GivesTheBooksOfACaseAndLeavesTheProjectAlone) {
    EXPECT_EQ(book({"--case", "零序"}).code, 3) << "nothing is calculated";
    EXPECT_EQ(book({"--case", "没有"}).code, 2);
    EXPECT_EQ(book({"--case", "零序", "--format", "pdf"}).code, 1);
    callAll({{"case", "run", name, "零序", "--klm"},
             {"case", "new", name, "--type", "3", "--name", "另一个", "--relay", "5", "--part", "1", "--max",
              "最大方式", "--min", "最小方式"},
             {"case", "run", name, "另一个"}});
    const Answer text = book({"--case", "零序"});
    EXPECT_EQ(text.code, 0) << text.err;
    EXPECT_THAT(text.out, HasSubstr("本段的定值确定为：\r\n            零序电流定值="));
    EXPECT_THAT(text.out, HasSubstr("Klm="));
    EXPECT_THAT(text.out, Not(HasSubstr("零序电流定值=0.000000 （一次值）")));
    EXPECT_THAT(book({"--case", "零序", "--kind", "sensitivity"}).out,
                HasSubstr("灵敏度参量计算结果：\r\n            3I0="));
    EXPECT_EQ(book({"--case", "另一个", "--kind", "sensitivity"}).code, 3) << "they are of the other case";
    EXPECT_THAT(book({"--case", "零序", "--format", "html"}).out, HasSubstr("<!DOCTYPE html>"));
}

TEST_F(BookVerb, WritesTextFilesInTheViewersEncoding) {
    const QTemporaryDir folder;
    callAll({{"case", "run", name, "零序"}, {"book", name, "--case", "1", "--out", folder.filePath("book.txt")}});
    QFile file(folder.filePath("book.txt"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(
        sql::fromGbk(file.readAll()).startsWith("继电保护整定计算书\r\n\r\n      作业名：  零序    计算日期：  "));
    EXPECT_EQ(book({"--case", "1", "--out", folder.filePath("没有/book.txt")}).code, 2);
}

}  // namespace
