#pragma once

#include <QObject>
#include <QStringList>

class QComboBox;
class QLineEdit;
class QListWidget;

/// The items of a list or text type and the default value among them: the edit of the next item, the list, and the
/// combo box of the default, which offers what the list holds.
class DetailItems : public QObject
{
    Q_OBJECT

public:
    /// What the column of the default holds, in letters; an item may have more.
    static constexpr int LongestDefault = 50;

    /// What came of adding the typed item.
    enum class Added {
        Yes,
        Blank,    ///< nothing was typed; nothing happens
        Repeated, ///< the list has exactly this text
    };

    /// The controls belong to the form; they outlive this object.
    DetailItems(QLineEdit &next, QListWidget &list, QComboBox &defaultValue, QObject *parent);

    QStringList Items() const;
    /// Replaces all items; the default value keeps its text as far as the new items allow.
    void SetItems(const QStringList &items);

    /// The default is one of the items (true) or any text (false).
    void SetPickOnly(bool pickOnly);
    /// The position of the default, -1 for none.
    int DefaultItem() const;
    void SetDefaultItem(int position);
    QString DefaultText() const;
    void SetDefaultText(const QString &text);

    Added Add();
    /// Moves the selected item one place, the selection with it; nothing beyond the ends.
    void MoveUp() { Move(-1); }
    void MoveDown() { Move(1); }
    /// Removes the selected item.
    void Remove();

signals:
    /// The items changed, or their order.
    void Changed();

private:
    void Move(int places);
    void RebuildDefault();
    void RebuildDefault(const QString &text);

    QLineEdit &m_next;
    QListWidget &m_list;
    QComboBox &m_default;
};
