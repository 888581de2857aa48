#include "programs/workflow/ui/SettingPictures.h"

SettingPictures::SettingPictures(int, int, QWidget* parent) : QWidget(parent) {}

void SettingPictures::showPart(int, int) {}
