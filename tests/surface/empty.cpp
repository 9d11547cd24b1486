// A library of nothing: what the tool chain itself puts into one.
