// Texts on their way from and to a phone: code page, small UTF-8, hex, numbers, what a phone can hold, and
// names that become local files.

#include "app/CodePage.h"
#include "app/Files.h"
#include "app/mdlKonverter.h"
#include "app/SafeLocalName.h"
#include "app/Utf8Small.h"
#include "phonedata/PhoneCharacters.h"
#include "support/TestContext.h"
#include "support/TestProgram.h"

using app::ReplaceResult;

class tst_Texts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyByteSurvives()
    {
        QByteArray all;
        for (int value = 0; value < 256; ++value)
            all.append(static_cast<char>(value));
        const QString text = app::fromCp1252(all);
        QCOMPARE(text.size(), 256);
        QCOMPARE(app::toCp1252(text), all);
        QCOMPARE(text[0x80], QChar(u'€'));
        QCOMPARE(text[0x95], QChar(u'•'));
        QCOMPARE(text[0x81], QChar(0x81));
        QCOMPARE(text[0xFC], QChar(u'ü'));
    }

    void charactersOutsideTheCodePage()
    {
        const Rows<QString, QByteArray, bool> rows{
            {"German", u"Größe"_s,
             "Gr\xF6\xDF"
             "e",
             true},
            {"Polish", u"Łódź"_s,
             "?\xF3"
             "d?",
             false},
            {"one question mark for a pair of surrogates", u"a😀b"_s, "a?b", false},
        };
        rows.each([&](const auto& text, const auto& bytes, const auto& fits) {
            QCOMPARE(app::toCp1252(text), bytes);
            QCOMPARE(app::fitsCp1252(text), fits);
        });
    }

    void hex()
    {
        const Rows<QString, QByteArray> rows{
            {"blanks between", u"32 13 02"_s, "\x32\x13\x02"},
            {"single last character", u"414"_s, "A"},
            {"no hex", u"zz41"_s, QByteArray("\0A", 2)},
            {"empty", {}, {}},
        };
        rows.each([&](const auto& text, const auto& bytes) {
            QCOMPARE(app::TextFromHex(text), bytes);
            QCOMPARE(app::TextFromHex(app::HexFromTextPlain(bytes)), bytes);
            QCOMPARE(app::HexFromText("AB\n"), u" 41 42 0A"_s);
        });
    }

    void partsOfAMoment()
    {
        QString year;
        std::array<QString, 5> others;
        app::GetDateParts(QDateTime({2026, 3, 4}, {5, 6, 7}), year, others[0], others[1], others[2],
                          others[3], others[4]);
        QCOMPARE(year + u' ' + QStringList(others.begin(), others.end()).join(u' '),
                 u"2026 03 04 05 06 07"_s);
    }

    void numbers()
    {
        const Rows<QString, double, bool> rows{
            {"stops at the first other character", u"12 Einträge"_s, 12.0, false},
            {"sign and point", u" -1.5"_s, -1.5, true},
            {"none", u"?"_s, 0.0, false},
            {"empty", {}, 0.0, false},
            {"infinity is no number", u"inf"_s, 0.0, false},
        };
        rows.each([&](const auto& text, const auto& value, const auto& numeric) {
            QCOMPARE(app::Val(text), value);
            QCOMPARE(app::IsNumeric(text), numeric);
            QCOMPARE(app::ValInt(u"99999999999999999999"_s), std::numeric_limits<qint32>::max());
        });
    }

    void namesAndNumbersOfAPhone()
    {
        const Rows<QString, QString, QString> rows{
            {"letter in a number", u"12a45"_s, u"12a45"_s, u"12"_s},
            {"written for people", u"+49 (30) 123"_s, u"+49 (30) 123"_s, u"+49"_s},
            {"pause and recall", u"R0P12*#"_s, u"R0P12*#"_s, u"R0P12*#"_s},
            {"not in the code page", u"Łódź"_s, {}, {}},
        };
        rows.each([&](const auto& typed, const auto& name, const auto& number) {
            QCOMPARE(phonedata::acceptedName(typed), name);
            QCOMPARE(phonedata::acceptedNumber(typed), number);
        });
    }

    /// The phone's small UTF-8, which is decoded by rules of its own.
    void decodesWithItsMistakes()
    {
        const Rows<const char*, const char*> rows{
            {"u umlaut", "4D C3 BC 6C", "4D FC 6C"},
            {"low second byte", "C3 40 C3 00", "80 40"},
            {"encoded twice, where the new C3 loses the C2", "C3 83 C2 BC", "FC"},
            {"second above 191 is lost", "41 C3 C4 BC 42", "41 FC 42"},
            {"other sequences", "C2 A0 E2 82 AC", "C2 A0 E2 82 AC"},
        };
        rows.each([&](const auto& bytes, const auto& text) {
            QCOMPARE(app::UFT8Dec(app::fromCp1252(QByteArray::fromHex(bytes))),
                     app::fromCp1252(QByteArray::fromHex(text)));
        });
    }

    void encodingReadsBack()
    {
        QCOMPARE(app::toCp1252(app::Utf8EncC3(u"aÄß€\u2013"_s)),
                 QByteArray::fromHex("61 C3 84 C3 9F C3 40 C3 56"));
        QByteArray all;
        for (int value = 0; value < 256; ++value) {
            if (value != 0xC3 && value != 0x83)
                all.append(static_cast<char>(value));
        }
        QCOMPARE(app::UFT8Dec(app::Utf8EncC3(app::fromCp1252(all))), app::fromCp1252(all));
    }

    void safeNames()
    {
        for (const QString& fine : {u"Bild.jpg"_s, u"Grüße 1.txt"_s, u"a..b"_s, u".hidden"_s,
                                    u"CONTACT.vcf"_s, u"COM10.txt"_s, u"ohne"_s, QString(255, u'x')})
            QCOMPARE(app::safeLocalName(fine), fine);
        QCOMPARE(app::safeLocalName(u"/etc/passwd"_s), u"passwd"_s);
        QCOMPARE(app::safeLocalName(u"..\\..\\Start\\x.exe"_s), u"x.exe"_s);
        QCOMPARE(app::safeLocalName(u"a/b\\c/d.txt"_s), u"d.txt"_s);
        const QStringList names =
            u"|.|..|a/..|a\\|x/|a\nb|a\u0085b|tab\t.txt|C:x.txt|what?|x.|x |con|Nul.txt|COM1|conin$.txt|LPT²|"
            "lpt9.tar.gz|exe\u202Egpj.jpg|a\0b"_s.split(u'|');
        for (const QString& refused : names + QStringList{u"a|b"_s, QString(256, u'x'), QString(128, u'ü')})
            QVERIFY2(app::safeLocalName(refused).isEmpty(), qPrintable(refused));
    }

    void replacesFiles()
    {
        TestContext test;
        const QString fresh = test.path(u"fresh.bin"_s);
        QCOMPARE(app::replaceFile(test.context, fresh, "one"), ReplaceResult::Written);
        QCOMPARE(TestContext::contentOf(fresh), "one"_ba);

        const QString old = test.makeFile(u"old.bin"_s, "old content");
        QVERIFY(QFile::setPermissions(old, QFileDevice::ReadOwner));
        QCOMPARE(app::replaceFile(test.context, old, "new"), ReplaceResult::Written);
        QCOMPARE(TestContext::contentOf(old), "new"_ba);
        QCOMPARE(QDir(test.folder.path()).entryList({u"*.bin*"_s}),
                 (QStringList{u"fresh.bin"_s, u"old.bin"_s}));

        QCOMPARE(app::replaceFile(test.context, test.path(u"no/such/folder.bin"_s), "x"),
                 ReplaceResult::NotWritten);

        const QString fixed = u"/proc/version"_s; // nobody can replace it, whoever runs the test
        const QString question = u"Die Datei /proc/version konnte nicht ersetzt bzw. gelöscht werden."_s;
        test.dialogs.expectStart(question, Buttons::RetryCancel, Answer::Retry);
        test.dialogs.expectStart(question, Buttons::RetryCancel, Answer::Cancel);
        QCOMPARE(app::replaceFile(test.context, fixed, "x"), ReplaceResult::NotReplaced);
    }
};

KALMO_TEST(tst_Texts)
#include "tst_Texts.moc"
