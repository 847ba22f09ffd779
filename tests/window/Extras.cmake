kelgen_label_test(window threads desktop)
