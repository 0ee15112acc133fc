hv_fuzz(jpeg_fuzz Jpeg_Fuzz.cpp bkimgutl)
hv_fuzz(exif_fuzz EXIF_Fuzz.cpp bkimgutl)
hv_program(NAME hv_fuzz_seeds LAYER plain SOURCES Seeds.cpp USES hv_sample_pictures)
