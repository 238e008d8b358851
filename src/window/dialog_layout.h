// What the dialogs share in layout: tabs that scroll when the screen is small or the font large, radio
// groups that may have no choice, the place on the screen, the order of the Tab key.
#pragma once

#include <initializer_list>
#include <string_view>

#include <QSize>

class QButtonGroup;
class QDialog;
class QFormLayout;
class QLayout;
class QTabWidget;
class QWidget;

namespace kv {

// Tab number `index` of the form's table, with `content` as its page.
void AddTab(QTabWidget& tabs, std::string_view form, int index, QLayout* content);

// Settings may have no radio on (a fresh installation has no control system); -1 shows that. Nobody is
// told of it as of a click.
void ShowRadio(QButtonGroup& group, int id);

// At least `wanted`, never larger than the screen, in its middle; no part above or left of the screen.
void CentreOnScreen(QDialog& dialog, QSize wanted = {});

void ChainTabOrder(std::initializer_list<QWidget*> widgets);

} // namespace kv
