// Light and dark.
#pragma once

#include <QString>

enum class Theme { system, light, dark };

QString themeName(Theme theme);
// As it was chosen last.
Theme chosenTheme();
// From now on, and when the viewer begins again.
void chooseTheme(Theme theme);
// Once, when the viewer begins.
void applyChosenTheme();
