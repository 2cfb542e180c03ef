#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <stdexcept>

// The folder can't be made.
class DocumentFolderError : public std::runtime_error {
public:
    explicit DocumentFolderError(const QString &what) : std::runtime_error(what.toStdString()) {}
};

// The folder where the workbooks go for the user to keep ("Tavimetra" in the user's
// documents folder, ProgramFolder::documentsDir), and the names they take there: what the
// file holds and when it was written,
//
//     "OD values - Generic - Spring Run - Plate #1 - 2026-11-23 14-05-09.xlsx"
//
// A name already taken gets " (2)", " (3)" ... so an earlier file is never written over.
class DocumentFolder {
public:
    explicit DocumentFolder(const QString &path) : mPath(path) {}

    QString path() const { return mPath; }

    // A free file name for the parts (empty ones left out) and the time; makes the folder
    // when needed. Throws DocumentFolderError when the folder can't be made.
    QString newFilePath(const QStringList &parts, const QDateTime &when,
                        const QString &suffix = QStringLiteral("xlsx")) const;

    // A text as a piece of a file name on any system: no \ / : * ? " < > | or control
    // characters, no blanks or dots at the ends, at most kMaxPartLength characters.
    static QString fileNamePart(const QString &text);
    static constexpr int kMaxPartLength = 40;

private:
    QString mPath;
};
