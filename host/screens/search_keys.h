#pragma once

#include <QObject>

#include <functional>

class QLineEdit;
class QWidget;

namespace host {

/// The keys of a field that searches a list: Down goes into the list, Enter runs `take`, Esc empties the field before
/// it closes the screen. Belongs to `edit`; `list` lives as long.
class SearchKeys : public QObject
{
    Q_OBJECT

public:
    SearchKeys(QLineEdit *edit, QWidget *list, std::function<void()> take);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QLineEdit *m_edit;
    QWidget *m_list;
    std::function<void()> m_take;
};

} // namespace host
