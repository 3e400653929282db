#include "desk/window/home_page.h"

#include "host/look/theme.h"

#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr int TilesAcross = 4;
constexpr QSize TileSize(210, 96);
constexpr QSize TileIcon(40, 40);

QLabel *MakeLabel(const QString &objectName, double points, bool bold, const char *tone, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    QFont font = host::theme::InterfaceFont(points);
    font.setBold(bold);
    label->setFont(font);
    if (tone)
        label->setProperty(tone, true);
    return label;
}

/// A button that Enter presses as well as the space bar; lower where the screen is.
class Tile : public QToolButton
{
public:
    explicit Tile(QWidget *parent) : QToolButton(parent)
    {
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    }

    QSize sizeHint() const override { return TileSize.expandedTo(QToolButton::sizeHint()); }
    QSize minimumSizeHint() const override { return QToolButton::sizeHint(); }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            click();
        else
            QToolButton::keyPressEvent(event);
    }
};

QToolButton *MakeTile(QAction *command, QWidget *parent)
{
    auto *tile = new Tile(parent);
    tile->setDefaultAction(command);
    tile->setObjectName(command->objectName() + u"_Tile"_s);
    tile->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    tile->setIconSize(TileIcon);
    tile->setFocusPolicy(Qt::StrongFocus);
    tile->setProperty("tile", true);
    return tile;
}

} // namespace

HomePage::HomePage(const QList<QAction *> &commands, QWidget *parent) : QWidget(parent)
{
    setObjectName(u"HomePage"_s);
    m_company = MakeLabel(u"Company_LBL"_s, 20, true, nullptr, this);
    m_date = MakeLabel(u"Date_LBL"_s, 11, false, "soft", this);
    auto *figures = new QHBoxLayout;
    figures->setSpacing(48);
    m_figures = figures;
    auto *tiles = new QGridLayout;
    tiles->setSpacing(14);
    for (int i = 0; i < commands.size(); ++i)
        tiles->addWidget(MakeTile(commands.at(i), this), i / TilesAcross, i % TilesAcross);
    if (QLayoutItem *first = tiles->itemAt(0))
        first->widget()->setFocus(Qt::OtherFocusReason);

    auto *column = new QVBoxLayout;
    column->setSpacing(6);
    column->addStretch(2);
    column->addWidget(m_company);
    column->addWidget(m_date);
    column->addSpacing(12);
    column->addLayout(figures);
    column->addSpacing(12);
    column->addLayout(tiles);
    column->addStretch(3);
    auto *row = new QHBoxLayout(this);
    row->addStretch(1);
    row->addLayout(column);
    row->addStretch(1);
}

void HomePage::SetCompany(const QString &name, const QString &date)
{
    m_company->setText(name);
    m_date->setText(date);
}

void HomePage::SetFigures(const QList<std::pair<QString, QString>> &figures)
{
    while (QLayoutItem *item = m_figures->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    for (const auto &[number, caption] : figures) {
        auto *figure = new QWidget(this);
        auto *column = new QVBoxLayout(figure);
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(0);
        QLabel *value = MakeLabel(u"Figure_LBL"_s, 18, true, "accent", figure);
        value->setText(number);
        value->setAlignment(Qt::AlignRight | Qt::AlignAbsolute); // digits alone would stand at the left
        QLabel *words = MakeLabel(u"FigureCaption_LBL"_s, 10, false, "soft", figure);
        words->setText(caption);
        column->addWidget(value);
        column->addWidget(words);
        m_figures->addWidget(figure);
    }
    static_cast<QHBoxLayout *>(m_figures)->addStretch(1);
}

} // namespace desk
