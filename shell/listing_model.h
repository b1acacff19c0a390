// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/shown_text.h"
#include "lookup/listing_file.h"
#include "project/clsURL.h"

#include "core/collection.h"

#include <QAbstractTableModel>

#include <vector>

namespace sondrel {

/// Whose a listing is: of nobody tracked, the user's, or a competitor's.
enum class ListingOwner { Nobody, Own, Competitor };

/// Whose each listing is: the last tracked URL that matches decides.
std::vector<ListingOwner> listingOwners(ApplicationContext &app, const std::vector<Listing> &listings,
                                        const Collection<clsURL> *tracked);

/// The title of a listing as a person should see it: one engine writes GB 2312 and says nothing of it.
QString shownTitle(ApplicationContext &app, const QString &engineName, const QString &stored);

/// The listings under the keyword grid: number, title and URL, and whose each is.
class ListingModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column : int { Number, Title, Url, ColumnCount };
    enum Role : int { OwnerRole = Qt::UserRole }; // ListingOwner

    explicit ListingModel(ApplicationContext &app, QObject *parent = nullptr);

    /// Shows these listings of an engine, nobody's until they are marked.
    void setListings(std::vector<Listing> listings, const QString &engineName = {});
    /// Marks the listings of the tracked URLs; null marks none.
    void HightLightResultURL(const Collection<clsURL> *tracked);
    const std::vector<Listing> &listings() const { return m_listings; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    ApplicationContext &m_app;
    QString m_engineName;
    std::vector<Listing> m_listings;
    std::vector<ListingOwner> m_owners;
};

} // namespace sondrel
