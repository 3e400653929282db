#pragma once

#include <QWidget>

#include <functional>

class QAction;
class QLabel;

namespace desk {

/// The first page of the main window: whose desk it is, what is in the database, and the commands of every day.
class HomePage : public QWidget
{
    Q_OBJECT

public:
    /// The commands appear as tiles in their order; the page does not own them.
    explicit HomePage(const QList<QAction *> &commands, QWidget *parent = nullptr);

    void SetCompany(const QString &name, const QString &date);
    /// A number with its caption, in the place `index` from the start.
    void SetFigures(const QList<std::pair<QString, QString>> &figures);

private:
    QLabel *m_company;
    QLabel *m_date;
    QLayout *m_figures;
};

} // namespace desk
