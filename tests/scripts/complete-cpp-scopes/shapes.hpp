namespace std {
template <class T> class vector { unsigned size(); void swap(); };
class vector_base {};
class string {};
}
template <class T>
class Outer {
    int name;
    int narrow;
    class Inner { int member; int mesh; };
};
class Other { int name; int narrower; };
namespace far { class Outer { int native; }; }
