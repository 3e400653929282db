#pragma once

#include "host/host.h"
#include "rules/opening_row_text.h"
#include "rules/quantity_entry.h"

#include <QSet>

#include <functional>
#include <optional>

/// A line whose details are to be entered, with what the entry shows of it.
struct DetailEntryRequest
{
    host::TDocumentLine line; ///< unit type 0: found from the good
    QString goodName;
    QString storeName;
    QString unit1Name;
    QString unit2Name;
    std::optional<host::TAmounts> wanted; ///< what was typed already
};

/// Opens the entry of details, which keeps what was entered; the amounts of all of it, nothing when it was left. The
/// screens of good details are another room: who makes a screen hands it this.
using DetailEntry = std::function<std::optional<host::TAmounts>(const DetailEntryRequest &request)>;

/// The details (serials, colours …) of a good's opening rows while its editor is open: they are kept for this desk and
/// written with the good.
class OpeningDetails
{
public:
    explicit OpeningDetails(host::Host &host) : m_host(host) {}

    void SetEntry(DetailEntry entry) { m_entry = std::move(entry); }
    /// A good is opened. One that is not saved has no detail types yet that could be entered, nor has one whose types
    /// were changed since: `typesAreSaved` is asked each time.
    void Begin(int goodCode, std::function<bool()> typesAreSaved);
    /// What the save of the good would write was entered or moved here.
    bool Changed() const { return m_changed; }
    /// Forgets what was entered and not saved.
    void End();
    /// Details are kept in this shop, so that quantities have their buttons.
    bool Offered() const;

    /// The numbers of the rows that have details.
    QSet<int> Rows() const;
    /// Opens the entry for a row; what its details come to now, nothing when it was left or refused (and said so).
    std::optional<goods::UnitAmounts> Enter(const goods::OpeningGood &good, int row, int store,
                                            const QString &storeName, const goods::UnitAmounts &typed);
    /// Asks whether the details go along to another store.
    bool AskStore() const;
    void ChangeStore(int row, int store, int newStore);

    /// Remembers what is entered for a row at the moment, once until Forget(), and puts it back.
    void Remember(int row);
    void Restore();
    void Forget() { m_remembered = 0; }

    /// The good has only these opening rows: details of others go with the next save of details. `rows` is a SELECT as
    /// `goods::OpeningCopy::SavedNumbers` gives it.
    void KeepRows(const QString &rows);
    /// The good has types whose details can be entered.
    bool HasTypes() const;

private:
    host::TDocumentLine Line(int row, int store) const;

    host::Host &m_host;
    DetailEntry m_entry;
    std::function<bool()> m_typesAreSaved = [] { return false; };
    int m_good = 0;
    int m_remembered = 0;   ///< row
    bool m_touched = false; ///< something may be kept for this desk
    bool m_changed = false;
};
