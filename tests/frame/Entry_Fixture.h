#pragma once

#include "frame/Entry_Sequence.h"
#include "frame/ports/Scripted_Platform.h"

/// Ports of the start and the close that write down in which order they are called.
struct Entry_Fixture {
    QStringList calls;

    struct Kernel : Kernel_Setup {
        explicit Kernel(QStringList& log) : calls(log) {}
        void Set_CMYK_Parameters(const CMYK_Setting& s) override
        {
            calls << QStringLiteral("cmyk %1 %2 %3").arg(double(s.black_gamma)).arg(s.black_start).arg(s.ink_limit);
        }
        void Set_Background_Color(const Background_Color& c) override
        {
            calls << QStringLiteral("background %1 %2 %3").arg(c.red).arg(c.green).arg(c.blue);
        }
        int Live_Bitmaps() const override { return live; }
        QStringList& calls;
        int live = 0;
    };

    struct Printer : Printer_Binding {
        explicit Printer(QStringList& log) : calls(log) {}
        void Clear() override { calls << "clear printer"; }
        Page_Orientation Default_Orientation() const override
        {
            calls << "orientation";
            return Page_Orientation::Landscape;
        }
        bool Open_Printer(const QString& name) override
        {
            calls << "printer " + name;
            return known.contains(name);
        }
        void Open_Default_Printer() override { calls << "default printer"; }
        QString Device_Name() const override { return device; }
        QStringList& calls;
        QStringList known;
        QString device;
    };

    Scripted_Platform scripted;
    Kernel kernel{calls};
    Printer printer{calls};
    Entry_Ports ports{scripted.platform, kernel, printer};
    Program_State state;
};
