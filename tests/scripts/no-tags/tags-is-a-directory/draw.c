int area;
