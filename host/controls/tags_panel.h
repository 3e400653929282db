#pragma once

#include "host/host_export.h"

#include <QColor>
#include <QList>
#include <QWidget>

class QToolButton;

namespace host {

class FlowLayout;

/// A coloured word that can be put on a record.
struct Tag
{
    int Code = 0;
    QString Name;
    QColor Color;
};

/// Tags as chips, in several lines when they need them. Unless read-only, each chip can be taken off and a button
/// offers the tags that are not on yet.
class HOST_EXPORT TagsPanel : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool readOnly READ isReadOnly WRITE setReadOnly)

public:
    explicit TagsPanel(QWidget *parent = nullptr);

    /// Every tag that can be put on.
    void SetAvailable(const QList<Tag> &tags);
    /// The tags that are on, in their order. Codes that are not available are dropped. Emits nothing.
    void SetCodes(const QList<int> &codes);
    QList<int> Codes() const;
    /// The codes joined by ",".
    QString CodesText() const;
    /// Their names, in the same order.
    QStringList Names() const;
    /// Reads what `CodesText` wrote; anything but numbers between the commas is passed over.
    void SetCodesText(const QString &codes);
    /// The same for the text of a record: codes that are not available are not shown, but stay in `CodesText`.
    void ShowStored(const QString &codes);
    void Clear() { SetCodes({}); }

    bool isReadOnly() const { return m_readOnly; }
    void setReadOnly(bool readOnly);

signals:
    /// The user put a tag on or took one off.
    void Changed();

private:
    void Rebuild();
    void Offer();

    QList<Tag> m_available;
    QList<int> m_codes;
    QStringList m_hidden; ///< of the record, and not available
    bool m_readOnly = false;
    FlowLayout *m_flow;
    QToolButton *m_add;
};

} // namespace host
