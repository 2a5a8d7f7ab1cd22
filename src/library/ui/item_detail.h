#pragma once

#include "library/library.h"
#include "library/library_versions.h"
#include "library/ui/card_pictures.h"
#include "library/ui/library_actions.h"

#include <QTimer>
#include <QWidget>
#include <optional>

class BarButton;
class PicturePane;
class QGridLayout;
class QLabel;
class QLineEdit;
class VersionsRow;

// All that is known of one capture, and what can be done with it.
class ItemDetail : public QWidget {
    Q_OBJECT
public:
    // The actions outlive it.
    ItemDetail(const LibraryPorts &ports, LibraryActions &actions, QWidget *parent = nullptr);

    void setItem(const LibraryItem &item);
    const QString &path() const { return m_item.path; }

private:
    // What a worker finds out about the file.
    struct Facts {
        CardPictures::Card card;
        std::optional<int> layers;
        QList<LibraryVersion> versions;
    };

    QWidget *makeActions();
    QLayout *makeTextSection();
    void load();
    void take(const Facts &facts);
    void updateCatalog();
    void commitName();
    void setRows(const QList<std::pair<QString, QString>> &rows);

    LibraryPorts m_ports;
    LibraryActions &m_actions;
    LibraryItem m_item;
    Facts m_facts;
    int m_generation = 0; // of loading
    PicturePane *m_picture;
    QLineEdit *m_name;
    BarButton *m_pin = nullptr;
    BarButton *m_star = nullptr;
    QGridLayout *m_info;
    VersionsRow *m_versions;
    QWidget *m_description;
    QLabel *m_descriptionText = nullptr;
    QWidget *m_textSection;
    QLabel *m_text = nullptr;
    BarButton *m_copyText = nullptr;
    QTimer m_copied; // while the button says so
};
