#include "exchange/ControlFile.h"

#include "exchange/TextFile.h"

namespace exchange {

namespace {
constexpr int kThird = 31;
constexpr int kFourth = 1;
constexpr int kSeventh = 1;
}  // namespace

std::string format(const Control& control) {
    std::string line;
    for (const int field : {control.elementClass, control.mlf, kThird, kFourth, control.nPara, control.lgup, kSeventh})
        line += std::to_string(field) + ",   ";
    return line + "\r\n";
}

Control parseControl(std::string_view text, const std::string& file) {
    Lines lines(text, file);
    if (!lines.next()) throw FormatError(file, 0, "is empty");
    const Fields fields = lines.fields();
    fields.require(7);
    return {fields.whole(0), fields.whole(1), fields.whole(4), fields.whole(5)};
}

}  // namespace exchange
