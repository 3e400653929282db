#include "desk/tour/tour_script.h"

#include "desk/application/desk_host.h"
#include "desk/window/main_window.h"
#include "host/data/query.h"

#include <QtGui/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>

namespace desk {

TourScript::TourScript(MainWindow &window, DeskHost &desk, TakePicture picture, ReportFault fail)
    : window_(window), desk_(desk), picture_(std::move(picture)), fail_(std::move(fail))
{}

void TourScript::When(const QString &name, const QString &control, std::function<void()> act)
{
    steps_ << TourStep{name, [control] { return Control(FrontWindow(), control) != nullptr; }, std::move(act)};
}

void TourScript::Command(const QString &name, const QString &action)
{
    steps_ << TourStep{name, [] { return !QApplication::activeModalWidget(); },
                       [this, self = shared_from_this(), action] { window_.Command(action)->trigger(); }};
}

void TourScript::Shot(const QString &name, const QString &control)
{
    const auto ready = [control] {
        return Control(FrontWindow(), control) != nullptr && !Control(FrontWindow(), u"Flash"_qs);
    };
    steps_ << TourStep{u"picture "_qs + name, ready,
                       [this, self = shared_from_this(), name] { picture_(FrontWindow(), name); }};
}

void TourScript::Key(const QString &name, const QString &control, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    When(name, control, [key, modifiers] { Press(key, modifiers); });
}

void TourScript::Fill(const QString &control, const QString &text)
{
    When(u"fill "_qs + control, control, [control, text] {
        Control(FrontWindow(), control)->setFocus();
        Press(Qt::Key_A, Qt::ControlModifier);
        Type(text);
    });
}

void TourScript::Focus(const QString &control)
{
    When(u"focus "_qs + control, control, [control] { Control(FrontWindow(), control)->setFocus(); });
}

void TourScript::AnswerYes(const QString &picture)
{
    const auto asked = [] { return FrontWindow() && FrontWindow()->objectName() == u"Message_BOX"; };
    if (!picture.isEmpty())
        steps_ << TourStep{u"picture "_qs + picture, asked,
                           [this, self = shared_from_this(), picture] { picture_(FrontWindow(), picture); }};
    steps_ << TourStep{u"answer Yes"_qs, asked, [] {
                           Press(Qt::Key_Tab);
                           Press(Qt::Key_Space);
                       }};
}

void TourScript::Expect(const QString &name, const QString &statement, int rows)
{
    steps_ << TourStep{name, [] { return !QApplication::activeModalWidget(); },
                       [this, self = shared_from_this(), statement, rows] {
                           const host::Query query(desk_.host.DM.ADOConnection1, statement);
                           if (query.RecordCount() != rows)
                               fail_(u"%1 rows instead of %2"_qs.arg(query.RecordCount()).arg(rows));
                       }};
}

void TourScript::ExpectText(const QString &label, const QString &text)
{
    When(u"read "_qs + label, label, [this, self = shared_from_this(), label, text] {
        const auto *shown = qobject_cast<QLabel *>(Control(FrontWindow(), label));
        if (!shown || !shown->text().contains(text))
            fail_(u"it says "_qs + (shown ? shown->text() : QString()));
    });
}

} // namespace desk
