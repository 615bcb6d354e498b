std::vector<int> numbers;
Outer::Inner::member();
[shelf putBook:title onLevel:2];
[list addObject:[dict objectForKey:key]];
call(width, height);
Box<int>::open();
Box<int>::Lid::close();
a->width = 3;
