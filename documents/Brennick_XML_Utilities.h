#pragma once

#include <QtCore/QString>

/// The mark-up of the program's own files: tags with attributes, and the text before a closing tag. The caller holds the
/// whole file as one text and asks for tag after tag; nothing keeps track of nesting, and nothing here is recursive.
///
/// A Position is 1-based and passed by reference; `Last` is the position behind the last character that may be read, so
/// a whole text ends at Behind_Text. No call looks at a character twice but for a few, so a text is read in one pass.
///
/// Not understood on purpose: comments, CDATA, document types and instructions other than the prolog (each ends the
/// reading), and numeric references (they stay as they are).

struct XML_Tag {
    QString Name{};       ///< a closing tag begins with "/"; empty: no further tag was found
    QString Attributes{}; ///< between the name and ">", trimmed and still encoded
    QString Text{};       ///< closing tags: the decoded text between the previous tag and this one
    bool Self_Closing = false;
};

/// The Last of a whole text.
inline int Behind_Text(const QString& text)
{
    return int(text.size()) + 1;
}

QString XML_Prolog();

/// The prolog, with Position behind it. Without "<?xml" the result is empty and Position stays; with one that is not
/// well formed (version alone, no blank before "?>") the result is empty and Position stands at its "<".
QString XML_Read_Prolog(const QString& Source, int& Position, int Last);

/// The next tag, with Position behind its ">". An empty tag leaves Position alone: there is no complete tag before Last,
/// or the next "<" is followed by no valid name. A ">" ends a tag even inside quotes.
XML_Tag XML_Next_Tag(const QString& Source, int& Position, int Last);

/// "<Name Attributes/>", or with a Text "<Name Attributes>Text</Name>". The text is encoded, or, with Wrap_Content,
/// written as it stands on lines of its own. Attributes are written as they stand.
QString XML_Tag_Text(const XML_Tag& Tag, bool Wrap_Content);

/// The decoded value; empty when there is none. The name is searched as plain text without regard to case, and its first
/// place alone counts: in "mytop='1'" there is a "top".
QString XML_Attribute(const QString& Attributes, const QString& Attribute_Name);

QString XML_Encode(const QString& Text); ///< "<", "&", ">" and both quotes become entities
QString XML_Decode(const QString& Text); ///< the five entities, written exactly so; any other "&" stays

/// Trimmed, without a leading "/".
QString XML_Base_Name(const QString& Tag_Name);

/// " name='value'" with the value encoded, as callers put attributes together.
QString XML_Attribute_Text(const QString& Attribute_Name, const QString& Value);
