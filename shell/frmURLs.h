// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "shell/program_dialog.h"
#include "shell/url_form.h"

class QLineEdit;
class QPushButton;
class QTreeWidgetItem;

namespace sondrel {

class UrlListView;

/// Picks a project's URLs from the list of all that are known on this machine, and edits that list.
class frmURLs final : public ProgramDialog
{
    Q_OBJECT

public:
    explicit frmURLs(ApplicationContext &app, QWidget *parent = nullptr);

    /// The project's URLs, before the dialog is shown and behind its OK.
    void setURLCollection(Collection<clsURL> urls) { m_collection = std::move(urls); }
    const Collection<clsURL> &URLCollection() const { return m_collection; }

protected:
    void load() override;

private:
    QTreeWidgetItem *addRow(const KnownURL &row);
    std::vector<KnownURL> rows() const;
    void addTyped();
    void DeleteURL();
    void toggleChecks();
    void sortRows();
    void UpdateUI();
    void SaveForm();
    void acceptForm();

    Collection<clsURL> m_collection;
    bool m_known = false; // whether the list could be read; one that could not must not be lost
    Qt::SortOrder m_order = Qt::DescendingOrder;

    QLineEdit *m_typed = nullptr;
    UrlListView *m_urls = nullptr;
    QPushButton *m_add = nullptr;
    QPushButton *m_delete = nullptr;
    QPushButton *m_ok = nullptr;
};

/// Asks whether the selected URLs are to go.
bool askToRemoveURLs(ApplicationContext &app);

} // namespace sondrel
