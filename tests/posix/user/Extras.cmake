kelgen_label_test(posix_user threads)
