#include "host/controls/grid.h"
#include "host/screens/base_dock.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

// What a screen keeps for its user between openings.

namespace host {

void TBaseDock_FRM::RememberLayout(Grid *grid)
{
    m_remembered << grid;
    connect(grid, &Grid::FetchFailed, this,
            [this](const QString &message) { m_host.messages.ShowMessage(message, MessageIcon::Error, Title()); });
}

QString TBaseDock_FRM::StateName() const
{
    return u"%1/%2/%3"_s.arg(ClassName()).arg(int(m_part)).arg(int(m_mode));
}

void TBaseDock_FRM::StoreState()
{
    QJsonObject state;
    for (const Grid *grid : std::as_const(m_remembered))
        state.insert(grid->objectName(), QString::fromUtf8(grid->SaveLayout()));
    const QByteArray own = SaveState();
    if (!own.isEmpty())
        state.insert(u"/screen"_s, QString::fromLatin1(own.toBase64()));
    if (!state.isEmpty())
        m_host.settings.SaveState(StateName(), QJsonDocument(state).toJson(QJsonDocument::Compact));
}

void TBaseDock_FRM::LoadState()
{
    const int user = m_host.settings.UserInfo().Code;
    if (!m_user)
        m_firstState = SaveState();
    const bool another = m_user && *m_user != user;
    m_user = user;
    if (another) { // a screen that is kept between openings must not show a user the habits of the last one
        for (Grid *grid : std::as_const(m_remembered))
            grid->ResetLayout();
        RestoreState(m_firstState);
        UserChanged();
    }
    const QByteArray stored = m_host.settings.LoadState(StateName());
    if (stored.isEmpty())
        return;
    const QJsonObject state = QJsonDocument::fromJson(stored).object();
    for (Grid *grid : std::as_const(m_remembered))
        grid->RestoreLayout(state.value(grid->objectName()).toString().toUtf8());
    RestoreState(QByteArray::fromBase64(state.value(u"/screen").toString().toLatin1()));
}

} // namespace host
