#include "desk/tour/tour_script.h"

#include "desk/application/desk_host.h"
#include "desk/window/main_window.h"
#include "host/data/query.h"

#include <QAction>
#include <QApplication>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace desk {

TourScript::TourScript(MainWindow &window, DeskHost &desk, TakePicture picture, ReportFault fail)
    : m_window(window), m_desk(desk), m_picture(std::move(picture)), m_fail(std::move(fail))
{}

void TourScript::When(const QString &name, const QString &control, std::function<void()> act)
{
    m_steps << TourStep{name, [control] { return Control(FrontWindow(), control) != nullptr; }, std::move(act)};
}

void TourScript::Command(const QString &name, const QString &action)
{
    m_steps << TourStep{name, [] { return !QApplication::activeModalWidget(); },
                        [this, self = shared_from_this(), action] { m_window.Command(action)->trigger(); }};
}

void TourScript::Shot(const QString &name, const QString &control)
{
    const auto ready = [control] {
        return Control(FrontWindow(), control) != nullptr && !Control(FrontWindow(), u"Flash"_s);
    };
    m_steps << TourStep{u"picture "_s + name, ready,
                        [this, self = shared_from_this(), name] { m_picture(FrontWindow(), name); }};
}

void TourScript::Key(const QString &name, const QString &control, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    When(name, control, [key, modifiers] { Press(key, modifiers); });
}

void TourScript::Fill(const QString &control, const QString &text)
{
    When(u"fill "_s + control, control, [control, text] {
        Control(FrontWindow(), control)->setFocus();
        Press(Qt::Key_A, Qt::ControlModifier);
        Type(text);
    });
}

void TourScript::Focus(const QString &control)
{
    When(u"focus "_s + control, control, [control] { Control(FrontWindow(), control)->setFocus(); });
}

void TourScript::Switch(const QString &setting)
{
    const QString toggle = setting + u"_CHK"_s;
    Command(u"open settings"_s, u"Settings_ACT"_s);
    Focus(toggle);
    Key(u"switch "_s + setting, toggle, Qt::Key_Space);
    Key(u"save settings"_s, toggle, Qt::Key_F3);
    Key(u"leave settings"_s, toggle, Qt::Key_Escape);
}

void TourScript::AnswerYes(const QString &picture)
{
    const auto asked = [] { return FrontWindow() && FrontWindow()->objectName() == u"Message_BOX"; };
    if (!picture.isEmpty())
        m_steps << TourStep{u"picture "_s + picture, asked,
                            [this, self = shared_from_this(), picture] { m_picture(FrontWindow(), picture); }};
    m_steps << TourStep{u"answer Yes"_s, asked, [] {
                            Press(Qt::Key_Tab);
                            Press(Qt::Key_Space);
                        }};
}

void TourScript::Expect(const QString &name, const QString &statement, int rows)
{
    m_steps << TourStep{name, [] { return !QApplication::activeModalWidget(); },
                        [this, self = shared_from_this(), statement, rows] {
                            const host::Query query(m_desk.host.DM.ADOConnection1, statement);
                            if (query.RecordCount() != rows)
                                m_fail(u"%1 rows instead of %2"_s.arg(query.RecordCount()).arg(rows));
                        }};
}

void TourScript::ExpectText(const QString &label, const QString &text)
{
    When(u"read "_s + label, label, [this, self = shared_from_this(), label, text] {
        const auto *shown = qobject_cast<QLabel *>(Control(FrontWindow(), label));
        if (!shown || !shown->text().contains(text))
            m_fail(u"it says "_s + (shown ? shown->text() : QString()));
    });
}

} // namespace desk
