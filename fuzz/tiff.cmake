hv_fuzz(tiff_fuzz Tiff_Fuzz.cpp bkimgutl)
