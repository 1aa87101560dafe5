extern "C" double velant_test_add(double a, double b) { return a + b; }
