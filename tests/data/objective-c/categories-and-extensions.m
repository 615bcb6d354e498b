@interface Base
{
    int first;
}
- (void) declared;
@end

@interface Base ()
{
    int ofAnExtension;
}
- (void) firstOfAnExtension;
@property int propertyOfAnExtension;
@end

@interface Base(WithoutBlanks)
+(void)classMethodOfACategory;
@end

@interface
    Base
    (
    OverLines
    )
- (void)
    methodOfACategory;
@end

@implementation Base
- (void) declared { }
- (void) firstOfAnExtension
{
}
- (void) undeclared;
{
}
@end

@implementation Base(WithoutBlanks)
+(void)classMethodOfACategory{}
@end

    @implementation Base (OverLines)
    - (void)
    methodOfACategory
    {
    }
    @end
