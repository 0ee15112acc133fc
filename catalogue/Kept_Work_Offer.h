#pragma once

#include "catalogue/Halvine_Form.h"
#include "catalogue/Work_Journal.h"

/// Offers what runs that did not end as they should have left in the journals of the folder. Yes picks the pictures of
/// the journal again and gives them back what was not saved; No throws the journal away; Cancel leaves it for the next
/// start. A journal that a running program holds is left alone. `journal` keeps what was restored before the old one goes.
void Offer_Kept_Work(Halvine_Form& form, Work_Journal& journal, const QString& folder);

/// The question for one journal: what it holds in numbers.
QString Kept_Work_Question(const Kept_Work& work);

/// Picks the pictures behind the present ones and gives them their changes. Turns and flips are left out where the file is
/// another than the one they were meant for, since it may hold them already; returns those files.
QStringList Restore_Kept_Work(Halvine_Form& form, const Kept_Work& work);
