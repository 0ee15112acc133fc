#pragma once

#include <QtCore/QString>
#include <cstddef>
#include <optional>
#include <span>

/// What a camera wrote beside a picture. Texts are trimmed; 0 stands for a value that is missing.
struct Camera_Record {
    QString Make;
    QString Model;
    QString Software;
    QString Image_Description;
    QString User_Comment;
    QString Date_Time_Taken; ///< as written, usually "yyyy:mm:dd hh:mm:ss"
    QString Date_Time_Digitized;
    QString Date_Time;
    int Image_Width = 0;
    int Image_Height = 0;
    int Exposure_Program = 0;
    int ISO_Speed = 0;
    int Light_Source = -1; ///< -1 missing; 0 is a code
    int Metering_Mode = 0;
    bool Flash_Used = false;
    int EXIF_Version = 0;     ///< 220 for 2.2
    int FlashPix_Version = 0; ///< 100 for 1.0
    float Brightness_Value = 0;
    float Exposure_Bias = 0;       ///< in exposure steps
    float Exposure_Time = 0;       ///< seconds
    float Shutter_Speed_Value = 0; ///< APEX: the time is 2 to the power of -value
    float F_Number = 0;
    float Aperture_Value = 0;         ///< APEX: the F number is 2 to the power of value / 2
    float Maximum_Aperture_Value = 0; ///< APEX
    float Focal_Length = 0;           ///< millimetres
    float Subject_Distance = 0;       ///< metres
    float Compressed_Bits_Per_Pixel = 0;

    /// Seconds: the exposure time or, without one, what the shutter speed value says; 0 without both.
    float Time_In_Seconds() const;

    /// The F number or, without one, what the aperture value says; 0 without both.
    float Aperture() const;

    /// What the maximum aperture value says; 0 without one.
    float Maximum_Aperture() const;
};

/// Reads an EXIF block, with or without its "Exif" head. Nothing when it is none: not "II" or "MM" with 42 and a first
/// directory at 8. Entries that point outside the block, or are of another type, count as missing.
std::optional<Camera_Record> Parse_Camera_Record(std::span<const std::byte> block);
