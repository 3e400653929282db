#pragma once

#include "host/host_export.h"
#include "host/services/entity_service.h"

#include <QWidget>

#include <functional>

class QLabel;
class QToolButton;

namespace host {

class DisplayEdit;

/// Chooses one item of a code-and-name list (a unit, a store, a group): an edit for the code, a button that opens the
/// list, the name beside them.
///
/// The edit takes a code (Persian digits too) or a part of a name; it is resolved on Enter, on leaving, and by
/// `Resolve()`. One item whose name contains the text is taken at once, several open the list on them. F2, Alt+Down and
/// the button open the list.
class HOST_EXPORT EntityPicker : public QWidget
{
    Q_OBJECT

public:
    explicit EntityPicker(QWidget *parent = nullptr);

    /// Tells where the items come from. `entities` outlives the picker; until it is set the picker resolves nothing.
    void SetSource(EntityService &entities, TSoftwarePart part);
    /// Offers a short list of the screen's own instead, which opens as a menu.
    void SetItems(const QList<Entity> &items);
    /// Runs what the picker does on a key, a click or on leaving: it catches what the source throws, shows it and
    /// returns false. What was typed stays then. A screen gives it to all its pickers when it opens.
    using Boundary = std::function<bool(const std::function<void()> &body)>;
    void SetBoundary(Boundary run);
    /// Asked before the list opens (a right to check); refusing is silent, the asker tells the user.
    void SetChooseGuard(std::function<bool()> guard);

    /// The chosen code, 0 for none. A typed text that was not resolved yet counts as none.
    int Code() const { return m_code; }
    /// The name of the chosen item, empty for none.
    QString Name() const;
    /// Nothing is chosen and nothing is typed.
    bool IsEmpty() const;
    /// Shows an item by its code; an unknown code or 0 clears. Emits nothing.
    void SetCode(int code);
    /// Shows an item that is known already; 0 clears. Asks the source nothing and emits nothing.
    void SetItem(int code, const QString &name);
    /// Emits nothing.
    void Clear();
    /// Nothing is chosen, and `text` stands in the place of the name: what applies without a choice. Emits nothing.
    void ShowInstead(const QString &text);

    /// Makes an item of what is typed. True when the edit is empty or an item was found; otherwise the typed text stays
    /// and the name says that there is none. `mayChoose` lets an ambiguous text open the list. Throws what the source
    /// throws: whoever calls is inside a command.
    bool Resolve(bool mayChoose = false);

    void SetReadOnly(bool readOnly);
    bool IsReadOnly() const;
    DisplayEdit *Edit() const { return m_edit; }

public slots:
    /// Opens the list, standing on what is typed.
    void Choose();

signals:
    /// The user chose, resolved or emptied: another code than before.
    void Changed(int code);
    /// The user edits the text; the code is 0 until it is resolved.
    void Edited();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    std::optional<Entity> Find(int code) const;
    QList<Entity> Named(const QString &text) const;
    int ChooseItem(const QString &text) const;
    void ShowName(const QString &name);
    void Take(int code, const QString &name);
    bool Fail();
    bool Run(const std::function<void()> &body);
    void OnEdited(const QString &text);

    EntityService *m_entities = nullptr;
    TSoftwarePart m_part = TSoftwarePart::Goods;
    QList<Entity> m_items;
    std::function<bool()> m_guard;
    Boundary m_run;
    int m_code = 0;
    int m_reported = 0;
    bool m_choosing = false;
    QString m_name;
    DisplayEdit *m_edit = nullptr;
    QToolButton *m_button = nullptr;
    QLabel *m_nameLabel = nullptr;
};

} // namespace host
