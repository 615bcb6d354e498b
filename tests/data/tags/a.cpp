int Foo();
