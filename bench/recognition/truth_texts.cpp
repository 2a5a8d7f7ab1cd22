#include "truth_texts.h"

#include <QMap>
#include <functional>

namespace {

QString signsOf(QRandomGenerator &random, QStringView set, int count)
{
    QString text;
    for (int i = 0; i < count; ++i)
        text += set[random.bounded(int(set.size()))];
    return text;
}

constexpr QStringView kDigits = u"0123456789";
constexpr QStringView kCapitals = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
constexpr QStringView kAny = u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
constexpr QStringView kHex = u"0123456789abcdef";

template <typename List>
auto oneOf(QRandomGenerator &random, const List &list)
{
    return list[random.bounded(int(list.size()))];
}

const QStringList &names()
{
    static const QStringList list{"marta",  "quay",   "harbour",  "jonas.keel",
                                  "li-wen", "desk_4", "o.brandt", "pier+ads"};
    return list;
}

QString secret(QRandomGenerator &random)
{
    const auto any = [&](int count) { return signsOf(random, kAny, count); };
    const auto digits = [&](int count) { return signsOf(random, kDigits, count); };
    const std::array<std::function<QString()>, 13> kinds{{
        [&] {
            return oneOf(random, names()) + '@' + oneOf(random, names()).remove('_').remove('+') + ".example";
        },
        [&] { return oneOf(random, names()) + "@lighthouse.org"; },
        [&] { return "+49 40 " + digits(3) + ' ' + digits(4); },
        [&] { return "(0" + digits(2) + ") " + digits(3) + '-' + digits(4); },
        [&] { return digits(4) + ' ' + digits(4); },
        [&] { return QString::number(1 + random.bounded(8)) + digits(7); },
        [&] {
            return QString("10.%1.%2.%3")
                .arg(random.bounded(255))
                .arg(random.bounded(255))
                .arg(random.bounded(255));
        },
        [&] { return "sk_live_" + any(20); },
        [&] { return "ghp_" + any(32); },
        [&] { return "AKIA" + signsOf(random, kCapitals, 16); },
        [&] { return "xoxb-" + digits(11) + '-' + any(12); },
        [&] { return "eyJ" + any(17) + '.' + any(20); },
        [&] { return signsOf(random, kHex, 40); },
    }};
    return kinds[size_t(random.bounded(int(kinds.size())))]();
}

// Of the kinds that can be switched off, with what must stand before them.
TruthLine furtherSecret(QRandomGenerator &random)
{
    const auto hex = [&](int count) { return signsOf(random, kHex, count); };
    const auto joined = [&](int groups, int signs, const QString &mark) {
        QStringList list;
        for (int i = 0; i < groups; ++i)
            list += hex(signs);
        return list.join(mark);
    };
    switch (random.bounded(5)) {
    case 0:
        return {{}, "2001:db8:" + hex(4) + "::" + joined(3, 4, ":"), {}};
    case 1:
        return {{}, joined(6, 2, random.bounded(2) ? ":" : "-"), {}};
    case 2: {
        const QString account = signsOf(random, kDigits, 18);
        int rest = 0;
        for (const QChar c : account + "131400") // the letters of the country, and the place of the checksum
            rest = (rest * 10 + c.digitValue()) % 97;
        QString iban = QString("DE%1").arg(98 - rest, 2, 10, QChar('0')) + account;
        for (qsizetype at = 20; at > 0; at -= 4)
            iban.insert(at, ' ');
        return {{}, iban, {}};
    }
    case 3:
        return {oneOf(random, QStringList{"Password: ", "pw: ", "API_TOKEN=", "client secret: "}),
                signsOf(random, u"abcdefghkmnpqrstuvwxyz23456789!$%", 9),
                {}};
    default:
        return {{},
                signsOf(random, kAny, 12) + '/' + signsOf(random, kAny, 15) + '+' + signsOf(random, kAny, 11),
                {}};
    }
}

QString words(QRandomGenerator &random, int count)
{
    static const QStringList list{
        "Boats",   "leave", "the",    "harbour",  "before", "noon",    "and",   "return", "with",
        "tide",    "Notes", "from",   "meeting",  "about",  "railing", "paint", "which",  "Owner",
        "by",      "of",    "summer", "rota",     "is",     "kept",    "in",    "office", "Keys",
        "are",     "given", "to",     "visitors", "who",    "ask",     "at",    "desk",   "Each",
        "crew",    "has",   "its",    "own",      "locker", "beside",  "door",  "please", "close",
        "windows", "when",  "storms", "come",     "closer"};
    QStringList some;
    for (int i = 0; i < count; ++i)
        some += oneOf(random, list);
    return some.join(' ');
}

QList<TruthLine> plain(const QStringList &lines)
{
    QList<TruthLine> all;
    for (const QString &line : lines)
        all.append({line, {}, {}});
    return all;
}

const QMap<QString, QStringList> &texts()
{
    static const QMap<QString, QStringList> all{
        {"de",
         {"Der Hafenmeister öffnet die Schleuse täglich um sieben Uhr früh.",
          "Für größere Boote müssen Gäste ihre Ankunft vorher anmelden.",
          "Die Gebühren hängen an der Tür des Büros aus; Änderungen möglich.",
          "Außerhalb der Öffnungszeiten hilft der Wachdienst über Kanal zwölf.",
          "Bitte schließen Sie die Fenster, wenn ein Gewitter aufzieht.",
          "Schlüssel für die Duschräume gibt es gegen eine kleine Gebühr.",
          "Während der Übung bleibt die äußere Brücke für Fußgänger gesperrt.",
          "Einstellungen, Aufnahmen löschen, Größe ändern, Zurücksetzen",
          "Die Überfahrt kostet 12,50 € für Erwachsene und 7,00 € für Kinder.",
          "„Wir öffnen früher“, schrieb Jürgen am 3. März um 16:20 Uhr.",
          "Lösche die Datei bericht_2.txt erst nach der Prüfung!",
          "Straßenkreuzungen, Maßstäbe und Ölstände stehen auf Blatt 4b.",
          "Jörg übernimmt die Schicht; Käthe hätte lieber den Frühdienst."}},
        {"fr",
         {"Le bureau du port ouvre chaque matin dès sept heures précises.",
          "Les bateaux plus longs doivent être annoncés à l'équipe la veille.",
          "Où se trouvent les clés de la réserve ? Elles sont déjà rangées.",
          "Après la tempête, les élèves ont nettoyé la forêt près du château.",
          "Ça coûte cher, mais la qualité de la peinture a été vérifiée.",
          "Fermez les fenêtres lorsque l'orage s'approche de la côte.",
          "Nous avons reçu votre réponse concernant le séjour à Orléans.",
          "Paramètres, Enregistrer sous, Préférences, Aperçu, Réinitialiser",
          "Le trajet coûte 12,50 € pour les adultes et 7 € pour les élèves.",
          "« Nous fermons plus tôt », écrit Hélène le 3 août à 16:20.",
          "Supprimez le fichier rapport_2.txt après la vérification !",
          "Le maïs, le blé noir et les œufs frais arrivent dès mardi.",
          "L'île est reliée à la côte par un câble très épais."}},
        {"pl",
         {"Biuro portu otwiera się codziennie rano już o siódmej godzinie.",
          "Większe łodzie należy zgłosić załodze dzień wcześniej.",
          "Klucze do łazienek można odebrać za niewielką opłatą.",
          "Proszę zamknąć okna, kiedy zbliża się gwałtowna burza.",
          "Żeglarze wracają późnym popołudniem, gdy wiatr słabnie.",
          "Ścieżka wzdłuż brzegu jest częściowo zamknięta dla pieszych.",
          "Następne spotkanie odbędzie się w środę w głównej świetlicy.",
          "Ustawienia, Zapisz jako, Usuń zaznaczone, Zmień rozmiar, Wyjście",
          "Przejazd kosztuje 12,50 zł dla dorosłych i 7 zł dla dzieci.",
          "„Otwieramy wcześniej”, napisał Michał 3 września o 16:20.",
          "Usuń plik raport_2.txt dopiero po sprawdzeniu całości!",
          "Źródło światła, żółte kółka i ćwiczenia są na stronie 4b.",
          "Małgorzata weźmie tę zmianę, Łukasz wolałby poranną."}},
        {"es",
         {"La oficina del puerto abre cada mañana a las siete en punto.",
          "Los barcos más largos deben avisar al equipo un día antes.",
          "¿Dónde están las llaves del almacén? Ya están en su cajón.",
          "Después de la tormenta los niños limpiaron la playa pequeña.",
          "El próximo miércoles habrá una reunión en el salón común.",
          "Cierre las ventanas cuando la lluvia se acerque a la bahía.",
          "La señal débil del radiofaro se oyó también en la montaña.",
          "Configuración, Guardar como, Tamaño, Contraseña, Cancelación",
          "El trayecto cuesta 12,50 € para adultos y 7 € para niños.",
          "«Abrimos más temprano», escribió Íñigo el 3 de agosto a las 16:20.",
          "¡Borre el archivo informe_2.txt sólo después de la revisión!",
          "La cigüeña voló sobre el río; según María, anidó en el balcón.",
          "¿Cuántos pasajeros caben? Averígüelo en la página 4b."}},
    };
    return all;
}

// What windows say in a word or two.
const QMap<QString, QStringList> &labels()
{
    static const QMap<QString, QStringList> all{
        {"de",
         {"Datei öffnen", "Bearbeiten", "Ansicht", "Hilfe", "Abbrechen", "Übernehmen", "Schließen",
          "Zurücksetzen", "Lautstärke", "Über das Programm", "Größe ändern", "Schriftart wählen",
          "Löschen bestätigen", "Netzwerk", "Töne", "Verfügbar", "Gerät hinzufügen", "Später erinnern"}},
        {"fr",
         {"Ouvrir le fichier", "Édition", "Affichage", "Aide", "Annuler", "Appliquer", "Fermer",
          "Réinitialiser", "Réglages du son", "À propos", "Modifier la taille", "Sélectionner tout",
          "Confirmer la suppression", "Réseau", "Téléchargements", "Déjà installé", "Périphériques",
          "Créer un élément"}},
        {"pl",
         {"Otwórz plik", "Edycja", "Widok", "Pomoc", "Anuluj", "Zastosuj", "Zamknij", "Przywróć domyślne",
          "Głośność", "O programie", "Zmień rozmiar", "Zaznacz wszystko", "Potwierdź usunięcie", "Sieć",
          "Dźwięki", "Dostępne", "Dodaj urządzenie", "Przypomnij później"}},
        {"es",
         {"Abrir archivo", "Edición", "Vista", "Ayuda", "Cancelar", "Aplicar", "Cerrar", "Restablecer",
          "Volumen del sonido", "Acerca del programa", "Cambiar tamaño", "Seleccionar todo",
          "Confirmar eliminación", "Conexión", "Imágenes", "Más información", "Añadir dispositivo",
          "Recordar más tarde"}},
    };
    return all;
}

} // namespace

QList<TruthLine> privateLines(QRandomGenerator &random, int count, int mostSigns)
{
    QList<TruthLine> lines;
    while (lines.size() < count) {
        const bool isShort = mostSigns < 40;
        TruthLine line{words(random, isShort ? 1 : 3), {}, {}};
        if (lines.size() % 3 == 2) {
            line.after = ' ' + words(random, isShort ? 2 : 4);
        } else {
            line.before += ' ';
            if (random.bounded(4) == 0) {
                const TruthLine further = furtherSecret(random);
                line.before += further.before;
                line.secret = further.secret;
            } else {
                line.secret = secret(random);
            }
            if (!isShort)
                line.after = ' ' + words(random, 2);
        }
        if (line.before.size() + line.secret.size() + line.after.size() <= mostSigns)
            lines.append(line);
    }
    return lines;
}

QStringList truthLanguages()
{
    return texts().keys();
}

QList<TruthLine> linesIn(const QString &language)
{
    return plain(texts()[language]);
}

QList<TruthLine> labelsIn(const QString &language)
{
    return plain(labels()[language]);
}

QList<TruthLine> linesInSeveral(QRandomGenerator &random)
{
    QList<TruthLine> lines;
    for (int line = 0; line < 28; ++line) {
        if (line % 2 == 0)
            lines += plain({words(random, 7)});
        else
            lines += plain({oneOf(random, texts()[oneOf(random, truthLanguages())])});
    }
    return lines;
}

QList<TruthLine> linesOfSigns()
{
    return plain({"Tickets cost 5€50 a day or GB£12 a week", "The ferry takes 100¥50 and 3§4 applies",
                  "Tolerance ±0.5 mm at ½ of the height", "Vidéo4K60 and Qualité1080p are offered",
                  "Paid €12.50, then £7.99 and ¥300", "See §12 and §14 for 20° and 45°",
                  "Part A1B2€ of order 7€", "Copyright © 24, marks ® and ™ stay"});
}

QList<TruthLine> linesOfScripts()
{
    return plain(
        {"def tide_at(port: str, hours=0) -> float:", "    if not ports or hours < 0:",
         "        raise ValueError(f\"no tide for {port!r}\")",
         "    total = sum(p.depth ** 2 for p in ports) // 3", "    return {'low': 1.25, 'high': 0.80}[port]",
         "$ grep -rn \"TODO\" src/*.rs | wc -l > out.txt && cat out.txt",
         "for f in *.log; do gzip -9 \"$f\" || exit 1; done",
         "SELECT id, name FROM boats WHERE length >= 12 AND berth != 0;",
         "fn main() -> Result<(), Error> { let n = 0x1F; Ok(()) }",
         "let open = boats.filter(b => b.isOpen && !b.isSold);", "#include <vector>",
         "const x = a === b ? c[0] : d?.e ?? null; // 3rd", "git commit --amend -m 'Fix #42: off by one'",
         "width: calc(100% - 2 * var(--gap)); /* 8px */"});
}

QList<TruthLine> linesOfCode()
{
    return plain({"int main(int argc, char **argv) {", "    for (size_t i = 0; i != count; ++i)",
                  "        *out++ = buffer[i] & 0xff;", "    if (a != b || c <= d && !done) return -1;",
                  "    // runs in O(n log n) of all rows", "    auto url = \"https://quay.example/a/b?c=d\";",
                  "    std::vector<int> rows{1, 2, 3};", "    x->next = y ? *y : nullptr; /* end */",
                  "    printf(\"%d %s\\n\", total, name);",
                  "    while (left >= 0 && mask[left] == 1) --left;", "    value += step * (high - low) / 2;",
                  "}"});
}
