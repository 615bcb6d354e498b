void plot_axis(void);
void plot_background_colour(void);
void plot_bar(void);
void plot_clear(void);
int plotter;
int pen;
