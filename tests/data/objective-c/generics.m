#define CLASS(name, ...) name<__VA_ARGS__>
#define CLASS_WITHOUT(name, ...) name
#define ROOT __attribute__((objc_root_class))
#define EXPORT __attribute__((visibility("default")))
@protocol P, Q;
@protocol P
@end
@protocol Q <P>
@end
ROOT
@interface Root
@end
EXPORT ROOT @interface OnTheSameLine
- (void) a;
@end
__attribute__((visibility("default"))) @interface List<__covariant T> : Root
- (T) first;
@end
@interface Map<K : id<P>, V> : Root <P, Q>
{
    List<V> *values;
}
- (V) for: (K)key;
- (List<List<V> *> *) all: (Map<id<P>, List<K> *> *)map;
@end
@interface Special<T : id<P>> : Map<T, List<T> *> <Q>
@end
EXPORT
@interface CLASS(Made, T) : CLASS(List, T) <P>
- (CLASS(List, T) *) made: (T)x;
@end
@interface CLASS_WITHOUT(Unmade, T) : CLASS_WITHOUT(Root, T)
- (void) unmade;
@end
@interface CLASS_WITHOUT(Unmade, T) (Category) <P>
- (void) unmadeToo;
@end
@interface List<T> (Category)
- (T) last;
@end
@interface List<T> ()
- (T) middle;
@end
@class List<T>, CLASS(Map, K : id<P>, V);
@implementation List
- (id) first { return 0; }
@end
@implementation List (Category)
- (id) last { return 0; }
@end
